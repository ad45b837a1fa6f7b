// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_CALLJOURNAL_H_
#define SNMPSUBAGENT_TESTS_CALLJOURNAL_H_

#include <sys/time.h>
#include <sys/types.h>

#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

// What the runtime calls outside: select() and the agent library's functions of
// the set-up and of the event loop. This program defines them itself: they are
// written down here and passed on to the real ones. A real wait in select() is
// cut short, so that no test waits for seconds.
//
// Threads: any.
class CallJournal {
 public:
  // The one of this process.
  static CallJournal& Get();

  // The names of the functions called, in order.
  std::vector<std::string> Calls() const;
  int Count(const std::string& name) const;
  void Clear();

  // The times that select() was given to wait.
  std::vector<timeval> Timeouts() const;

  // Whether the thread that called select() last still exists; true before the
  // first call.
  bool LastThreadExists() const;

  // Makes the next call of select() return `result`, and `error` in errno, at
  // once. May be repeated for those after it.
  void AnswerSelect(int result, int error = 0);

  // Calls `hook` with the name of each function at the end of its call, on the
  // thread that called it. May be empty.
  void SetHook(std::function<void(const std::string&)> hook);

  // Waits until select() has been called `count` times more.
  bool WaitForPasses(int count) const;

  // For the functions that this program defines.
  void Begin(const std::string& name);
  void End(const std::string& name);
  int Select(int count, fd_set* readable, timeval* timeout);

 private:
  struct Answer {
    int result;
    int error;
  };

  mutable std::mutex mutex_;
  std::vector<std::string> calls_;
  std::vector<timeval> timeouts_;
  pid_t lastThread_ = 0;
  std::deque<Answer> answers_;
  std::function<void(const std::string&)> hook_;
};

#endif  // SNMPSUBAGENT_TESTS_CALLJOURNAL_H_
