// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTKIT_FILEDESCRIPTOR_H_
#define SNMPSUBAGENT_TESTKIT_FILEDESCRIPTOR_H_

#include <unistd.h>

#include <utility>

namespace testkit {

// A file descriptor, closed at the end; -1 for none.
class FileDescriptor {
 public:
  explicit FileDescriptor(int number = -1) : number_(number) {}
  FileDescriptor(FileDescriptor&& other) noexcept
      : number_(std::exchange(other.number_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~FileDescriptor() {
    if (IsOpen()) close(number_);
  }

  bool IsOpen() const { return number_ >= 0; }
  int Number() const { return number_; }

 private:
  int number_;
};

}  // namespace testkit

#endif  // SNMPSUBAGENT_TESTKIT_FILEDESCRIPTOR_H_
