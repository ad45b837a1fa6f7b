// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "FailingNew.h"

#include <atomic>
#include <cstdlib>

namespace {

std::atomic<long> living{0};

// Allocations until the one that fails, of this thread and of all; 0 if none is
// to fail, -1 when it has.
thread_local int countdown = 0;
std::atomic<int> countdownOfAll{0};
thread_local bool spared = false;

template <typename Number>
bool IsToFail(Number& number) {
  if (number <= 0 || --number != 0) return false;
  number = -1;
  return true;
}

void* Allocate(std::size_t size) noexcept {
  if (IsToFail(countdown) || (!spared && IsToFail(countdownOfAll))) {
    return nullptr;
  }
  void* const memory = std::malloc(size == 0 ? 1 : size);
  if (memory != nullptr) ++living;
  return memory;
}

void Release(void* memory) noexcept {
  if (memory == nullptr) return;
  --living;
  std::free(memory);
}

}  // namespace

long LivingAllocations() { return living; }

AllocationFailure::AllocationFailure(int number, Failing who) {
  if (who == Failing::ThisThread) {
    countdown = number;
  } else {
    countdownOfAll = number;
  }
}

AllocationFailure::~AllocationFailure() { countdown = countdownOfAll = 0; }

bool AllocationFailure::Happened() const {
  return countdown == -1 || countdownOfAll == -1;
}

SparedThread::SparedThread() { spared = true; }

SparedThread::~SparedThread() { spared = false; }

void* operator new(std::size_t size) {
  void* const memory = Allocate(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

void* operator new[](std::size_t size) { return operator new(size); }

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return Allocate(size);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return Allocate(size);
}

void operator delete(void* memory) noexcept { Release(memory); }
void operator delete[](void* memory) noexcept { Release(memory); }
void operator delete(void* memory, std::size_t) noexcept { Release(memory); }
void operator delete[](void* memory, std::size_t) noexcept { Release(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept {
  Release(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept {
  Release(memory);
}
