// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_FUZZ_SUBJECT_H_
#define SNMPSUBAGENT_TESTS_FUZZ_SUBJECT_H_

#include <array>
#include <memory>
#include <string>

#include "Input.h"
#include "NetSNMPNodeData.h"

// A value that managers read and write, of any class and kept in any way, and
// beside it what is known of it: the results that it is to give.
class Subject {
 public:
  // Where the value is kept.
  enum class Storage { kVariable, kCopy, kNone };

  explicit Subject(Input& input);

  const NetSNMPNodeData& Value() const { return *value_; }
  bool Writable() const {
    return access_ == eNodeAccessReadWrite || access_ == eNodeAccessWriteOnly;
  }
  bool InVariable() const { return storage_ == Storage::kVariable; }

  // Whether the class gives the value a type: else a manager reads NULL.
  bool Typed() const { return typed_; }

  // What a reserve phase answers to these bytes, and COMMIT.
  int Validated(unsigned char asnType, const std::string& bytes) const;
  int Committed() const;

  // Records that COMMIT has written the bytes.
  void Commit(const std::string& bytes);

  // Whether a manager reads from `value` what is known.
  bool ReadsFrom(NetSNMPNodeData& value) const;

 private:
  // The application's variables, of which one is the value's. On the heap, each
  // by itself, so that nothing beyond the end goes unnoticed.
  struct Variables {
    int number = 0;
    unsigned int count = 0;
    bool truth = false;
    std::string text;
    std::unique_ptr<char[]> label;
    std::unique_ptr<unsigned char[]> address;
  };

  std::unique_ptr<NetSNMPNodeData> Build();
  bool Fits(const std::string& bytes) const;
  void CommitText(const std::string& text);

  int type_;
  bool typed_;
  bool sized_;  // a text that knows the size of its buffer
  eNodeAccessMode access_;
  Storage storage_;
  long number_;       // of the integers and the truth value
  std::string text_;  // of the others
  Variables variables_;
  std::unique_ptr<NetSNMPNodeData> value_;
};

#endif  // SNMPSUBAGENT_TESTS_FUZZ_SUBJECT_H_
