// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "FailingNew.h"

#include <atomic>
#include <cstdlib>

namespace {

std::atomic<long> living{0};

// Allocations until the one that fails; none fails below 1.
thread_local int countdown = 0;

void* Allocate(std::size_t size) noexcept {
  if (countdown > 0 && --countdown == 0) {
    countdown = -1;
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

AllocationFailure::AllocationFailure(int number) { countdown = number; }

AllocationFailure::~AllocationFailure() { countdown = 0; }

bool AllocationFailure::Happened() const { return countdown == -1; }

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
