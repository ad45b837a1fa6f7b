// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_OBJECTS_EVERYSOURCE_H_
#define SNMPSUBAGENT_TESTS_OBJECTS_EVERYSOURCE_H_

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

#include "Served.h"
#include "testkit/TrapReceiver.h"

// A value, how the tools show it, and how snmpset is told it: type letter and
// value ("i 5"). Without that, managers do not write it.
template <typename T>
struct Sample {
  T value;
  std::string shown;
  std::string word = {};
};

template <typename T, bool = std::is_trivially_copyable_v<T>>
struct AtomicOf {
  static constexpr bool kExists = false;
};
template <typename T>
struct AtomicOf<T, true> {
  static constexpr bool kExists = std::atomic<T>::is_always_lock_free;
  std::atomic<T> value{T{}};
};

// A scalar from each kind of source for a type, read-only and, if managers may
// write the type, writable. All show the same value.
template <typename T>
class EverySource {
 public:
  explicit EverySource(snmp::Module& module) : module_(module) {
    Add(variable_);
    Add(T{});
    Add([this] { return variable_; });
    Add([this] { return std::optional<T>(variable_); });
    Add(snmp::Cached([this] { return variable_; }, {}));
    Add(snmp::GetSet([this] { return variable_; }, [](const T&) {}));
    if constexpr (AtomicOf<T>::kExists) Add(atomic_.value);
    writable_ = scalars_.size();
    if constexpr (kWritable) AddWritable();
    forNotification_.assign(scalars_.begin(), scalars_.end());
    end_ = scalars_.size();
    Add([this](snmp::Later<T> reply) { reply.Answer(variable_); });
  }

  static constexpr bool kWritable = snmp::detail::CanRead<T>;

  // The application sets them all.
  void Set(const T& value) {
    variable_ = writtenVariable_ = set_ = value;
    if constexpr (AtomicOf<T>::kExists) {
      atomic_.value = value;
      writtenAtomic_.value = value;
    }
    for (const std::size_t held : held_) scalars_[held].Set(value);
  }

  // Names of those that managers write.
  std::vector<std::string> Writable() const {
    std::vector<std::string> names;
    for (std::size_t i = writable_; i < end_; ++i) {
      names.push_back(Served::Name(std::to_string(i + 1)));
    }
    return names;
  }

  // What those have come to.
  std::vector<T> Written() const {
    std::vector<T> values;
    for (std::size_t i = writable_; i < end_; ++i) {
      values.push_back(scalars_[i].Get());
    }
    return values;
  }

  std::size_t Size() const { return scalars_.size(); }

  // All but the one that is answered later, whose value is not at hand.
  const std::vector<snmp::NotificationObject>& ForNotification() const {
    return forNotification_;
  }

 private:
  template <typename Source, typename Access = snmp::ReadOnly>
  void Add(Source&& source, const Access& access = {}) {
    if (std::is_same_v<Source, T>) held_.push_back(scalars_.size());
    scalars_.emplace_back(module_, std::to_string(scalars_.size() + 1),
                          std::forward<Source>(source), access);
  }

  void AddWritable() {
    snmp::ReadWrite access;
    if constexpr (std::is_enum_v<T>) access.Range(INT32_MIN, INT32_MAX);
    Add(writtenVariable_, access);
    Add(T{}, access);
    Add(snmp::GetSet([this] { return set_; }, [this](const T& v) { set_ = v; }),
        access);
    if constexpr (AtomicOf<T>::kExists) Add(writtenAtomic_.value, access);
  }

  snmp::Module& module_;
  T variable_{};
  AtomicOf<T> atomic_;
  T writtenVariable_{};
  T set_{};
  AtomicOf<T> writtenAtomic_;
  std::vector<std::size_t> held_;
  // Those that managers write: the first of them, and behind the last.
  std::size_t writable_ = 0;
  std::size_t end_ = 0;
  std::vector<snmp::NotificationObject> forNotification_;
  std::vector<snmp::Scalar<T>> scalars_;
};

// Checks a type with the tools, value by value.
template <typename T>
class WithTools {
 public:
  WithTools()
      : served_(receiver_.SinkConfiguration()),
        scalars_(served_.module),
        notification_(served_.module, "0.1") {
    served_.Start();
  }

  // What they show of the application's value.
  void CheckShown(const Sample<T>& sample) {
    scalars_.Set(sample.value);
    EXPECT_THAT(
        served_.master.Manager().Objects("." + Module()),
        testing::AllOf(testing::SizeIs(scalars_.Size()),
                       testing::Each(testing::EndsWith(" = " + sample.shown))));
  }

  // What a notification tells of it.
  void CheckNotified(const Sample<T>& sample) {
    notification_.Send(scalars_.ForNotification());
    ASSERT_TRUE(receiver_.WaitForCount(++sent_));
    std::string expected = Module() + ".0.1";
    for (std::size_t i = 1; i <= scalars_.ForNotification().size(); ++i) {
      expected += "; " + Served::Name(std::to_string(i)) + " = " + sample.shown;
    }
    EXPECT_THAT(receiver_.Received().back(), testing::EndsWith(expected));
  }

  // What comes of the value that they set.
  void CheckTaken(const Sample<T>& sample) {
    std::vector<std::string> words;
    for (const std::string& name : scalars_.Writable()) {
      words.insert(words.end(),
                   {name, sample.word.substr(0, 1), sample.word.substr(2)});
    }
    EXPECT_EQ(served_.Set(words), "None");
    EXPECT_THAT(scalars_.Written(), testing::Each(sample.value));
    EXPECT_EQ(ShownAt(served_.master.Manager(), scalars_.Writable().front()),
              sample.shown);
  }

 private:
  static std::string Module() { return Served::kSubtree; }

  testkit::TrapReceiver receiver_;
  Served served_;
  EverySource<T> scalars_;
  snmp::Notification notification_;
  std::size_t sent_ = 0;
};

template <typename T>
void CheckWithTools(const std::vector<Sample<T>>& samples) {
  WithTools<T> tools;
  for (const Sample<T>& sample : samples) {
    SCOPED_TRACE(sample.shown);
    tools.CheckShown(sample);
    tools.CheckNotified(sample);
  }
  for (const Sample<T>& sample : samples) {
    SCOPED_TRACE(sample.word);
    if (!sample.word.empty()) tools.CheckTaken(sample);
  }
}

#endif  // SNMPSUBAGENT_TESTS_OBJECTS_EVERYSOURCE_H_
