// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Objects of all kinds that are built, used and destroyed in random order, from
// several threads and from their own functions, under requests of a master
// agent that comes and goes.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <random>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "Device.h"

namespace snmp = snmpsubagent;

namespace {

using namespace std::chrono_literals;

constexpr int kThreads = 3;
constexpr int kSteps = 2000;  // of each thread, and so many requests
constexpr int kPlaces = 4;    // objects of each kind, in each module

class Random {
 public:
  explicit Random(unsigned seed) : engine_(seed) {}
  int Below(int end) {
    return std::uniform_int_distribution<int>(0, end - 1)(engine_);
  }

 private:
  std::mt19937 engine_;
};

// Requests of every kind, whole SETs and such as end in the middle.
class RandomMaster {
 public:
  explicit RandomMaster(const testkit::agentx::Listener& listener)
      : listener_(listener) {}

  void Run(const std::atomic<bool>& end) {
    while (!end) {
      try {
        wire::MasterSession session(listener_.Accept(100ms), 2s);
        Serve(session, end);
      } catch (const std::runtime_error&) {
        // Nobody there, or gone in the middle.
      }
    }
  }

  int Answered() const { return answered_; }

 private:
  void Serve(wire::MasterSession& session, const std::atomic<bool>& end) {
    session.Grant(session.Next());
    const int requests = random_.Below(200);
    for (int i = 0; i < requests && !end; ++i) {
      Ask(session);
      ++answered_;
    }
  }

  void Ask(wire::MasterSession& session) {
    switch (random_.Below(5)) {
      case 0:
        session.Send(wire::Get{{Place(), Place()}});
        break;
      case 1:
        session.Send(wire::GetNext{{After("0"), Place()}});
        break;
      case 2:
        session.Send(wire::GetBulk{1, 10, {After("0"), Place()}});
        break;
      default:
        Set(session);
    }
    // The responses so far; some come late, or never.
    const auto last = session.Send(wire::GetNext{{After("99999")}});
    while (session.Receive().header.packetId != last) {
    }
  }

  void Set(wire::MasterSession& session) {
    const auto id = session.NewTransaction();
    session.Send(wire::TestSet{{Assigned(), Assigned()}}, id);
    if (random_.Below(6) == 0) throw wire::NoSubAgent("lost");
    session.Send(wire::CommitSet{}, id);
    if (random_.Below(6) == 0) throw wire::NoSubAgent("lost");
    if (random_.Below(3) == 0) session.Send(wire::UndoSet{}, id);
    session.Send(wire::CleanupSet{}, id);
  }

  std::string Name() {
    return std::to_string(random_.Below(kThreads)) + "." +
           std::to_string(1 + random_.Below(4 * kPlaces)) + ".0";
  }
  wire::SearchRange Place() { return From(Name()); }
  wire::Varbind Assigned() { return {Id(Name()), Int(random_.Below(3))}; }

  const testkit::agentx::Listener& listener_;
  Random random_{1};
  std::atomic<int> answered_{0};
};

// Objects of one thread, which it builds, uses and destroys as it comes.
class RandomObjects {
 public:
  RandomObjects(snmp::Agent& agent, int number,
                std::shared_ptr<std::atomic<int>> outcomes)
      : outcomes_(std::move(outcomes)),
        agent_(agent),
        number_(std::to_string(number)),
        random_(static_cast<unsigned>(number) + 17),
        scalars_(4 * kPlaces) {}

  // Functions of theirs may run until they are gone.
  ~RandomObjects() {
    std::vector<Scalar> own(scalars_.size());
    const auto lock = agent_.Lock();
    own.swap(scalars_);
  }

  int Sent() const { return sent_; }

  // Goes on until `answered` tells that there were enough requests.
  void Run(const std::function<int()>& answered) {
    const auto end = std::chrono::steady_clock::now() + 300s;
    for (int i = 0; i < kSteps || answered() < kSteps; ++i) {
      Step();
      if (std::chrono::steady_clock::now() >= end) return;
      if (i >= kSteps) std::this_thread::sleep_for(100us);
    }
    if (random_.Below(2) == 0) module_.reset();
  }

 private:
  using Scalar = std::unique_ptr<snmp::Scalar<int>>;

  void Step() {
    switch (random_.Below(12)) {
      case 0:
        if (random_.Below(4) == 0) module_.reset();
        break;
      case 1:
        Take(Any()).reset();
        break;
      case 2: {
        const auto lock = agent_.Lock();
        if (Scalar& scalar = scalars_[Any()]) scalar->Set(random_.Below(9));
        break;
      }
      case 3:
        AnswerOne();
        break;
      case 4:
        Send();
        break;
      case 5:
        if (random_.Below(20) == 0) agent_.Stop();
        agent_.Start();
        break;
      case 6: {
        const auto lock = agent_.Lock();
        scalars_[Any()].reset();
        Build(Any());
        break;
      }
      default:
        Build(Any());
    }
  }

  std::size_t Any() {
    return static_cast<std::size_t>(random_.Below(4 * kPlaces));
  }
  // To be destroyed without the lock.
  Scalar Take(std::size_t place) {
    const auto lock = agent_.Lock();
    return std::move(scalars_[place]);
  }

  void Build(std::size_t place) {
    // Functions of the scalars destroy others of them, under the lock.
    const auto lock = agent_.Lock();
    if (!module_) {
      for (Scalar& scalar : scalars_) scalar.reset();
      module_ = std::make_unique<snmp::Module>(agent_, kBase + ("." + number_));
    }
    if (scalars_[place]) return;
    const std::string oid = std::to_string(place + 1);
    scalars_[place] = Built(place, oid);
    scalars_[place]
        ->Check([](int before, int after) { return before != after + 1; })
        .Changed([this, place](int value) {
          if (value == 0) scalars_[(place + 1) % scalars_.size()].reset();
          if (value == 1) scalars_[place].reset();
        });
    if (place % 2 == 0) {
      scalars_[place]->Apply([](int, int after) { return after != 2; });
    } else {
      scalars_[place]->Apply(
          [this](int, int, snmp::Later<snmp::SetError> reply) {
            const std::lock_guard guard(mutex_);
            applies_.push_back(std::move(reply));
          });
    }
  }

  Scalar Built(std::size_t place, const std::string& oid) {
    switch (place % 4) {
      case 0:
        return std::make_unique<snmp::Scalar<int>>(*module_, oid, 5,
                                                   snmp::ReadWrite());
      case 1:
        return std::make_unique<snmp::Scalar<int>>(
            *module_, oid,
            snmp::GetSet([this] { return stored_; },
                         [this](int value) { stored_ = value; }),
            snmp::ReadWrite());
      case 2:
        return std::make_unique<snmp::Scalar<int>>(*module_, oid, value_,
                                                   snmp::ReadWrite());
      default:
        return std::make_unique<snmp::Scalar<int>>(
            *module_, oid,
            snmp::GetSet(
                [this]() -> std::optional<int> {
                  // An object that others destroy while it is read.
                  if (++stored_ % 5 == 0) scalars_[0].reset();
                  if (stored_ % 7 == 0) throw std::runtime_error("no");
                  return stored_ % 3 == 0 ? std::nullopt
                                          : std::optional(stored_);
                },
                [](int) {}),
            snmp::ReadWrite());
    }
  }

  void AnswerOne() {
    std::optional<snmp::Later<snmp::SetError>> apply;
    {
      const std::lock_guard guard(mutex_);
      if (applies_.empty()) return;
      apply = std::move(applies_.front());
      applies_.pop_front();
    }
    if (random_.Below(4) != 0) {
      apply->Answer(random_.Below(2) == 0 ? snmp::SetError::None
                                          : snmp::SetError::GenErr);
    }
  }

  void Send() {
    const auto lock = agent_.Lock();
    if (!module_) return;
    snmp::Notification notification(*module_, "0.1");
    std::vector<snmp::NotificationObject> objects;
    if (const Scalar& scalar = scalars_[Any()]) objects.emplace_back(*scalar);
    notification.Send(objects,
                      [outcomes = outcomes_](const snmp::NotificationResult&) {
                        ++*outcomes;
                      });
    ++sent_;
  }

  const std::shared_ptr<std::atomic<int>> outcomes_;
  snmp::Agent& agent_;
  const std::string number_;
  Random random_;
  int stored_ = 5;  // under the agent's lock
  std::atomic<int> value_{5};
  int sent_ = 0;
  std::mutex mutex_;
  std::deque<snmp::Later<snmp::SetError>> applies_;
  std::unique_ptr<snmp::Module> module_;
  std::vector<Scalar> scalars_;
};

TEST(Objects, LiveAndDieInAnyOrderUnderLoad) {
  const wire::Listener listener;
  RandomMaster master(listener);
  std::atomic<bool> end{false};
  std::thread serving([&] { master.Run(end); });

  snmp::AgentOptions options = Device::Options();
  options.master = listener.Address();
  options.timeout = 1s;
  options.notificationLimit = 10;
  options.log = [](snmp::LogLevel, const std::string&) {};
  auto agent = std::make_unique<snmp::Agent>("lifetimes", options);
  agent->Start();
  std::vector<std::unique_ptr<RandomObjects>> objects;
  const auto outcomes = std::make_shared<std::atomic<int>>(0);
  for (int i = 0; i < kThreads; ++i) {
    objects.push_back(std::make_unique<RandomObjects>(*agent, i, outcomes));
  }
  std::vector<std::thread> threads;
  for (const auto& own : objects) {
    threads.emplace_back([&] { own->Run([&] { return master.Answered(); }); });
  }
  for (std::thread& thread : threads) thread.join();
  agent->Start();
  EXPECT_TRUE(agent->WaitUntilConnected(300s));
  EXPECT_GE(master.Answered(), kSteps);

  int sent = 0;
  for (const auto& own : objects) sent += own->Sent();
  objects[1].reset();
  agent->Stop();
  EXPECT_EQ(*outcomes, sent);
  objects[0].reset();
  objects.clear();
  agent.reset();
  end = true;
  serving.join();
}

TEST(ARunningAgent, StopsAtAnyMoment) {
  const wire::Listener listener;
  RandomMaster master(listener);
  std::atomic<bool> end{false};
  std::thread serving([&] { master.Run(end); });
  snmp::AgentOptions options = Device::Options();
  options.master = listener.Address();
  options.log = [](snmp::LogLevel, const std::string&) {};
  for (int i = 0; i < 50; ++i) {
    snmp::Agent agent("stops", options);
    snmp::Module module(agent, kBase);
    const snmp::Scalar scalar(module, "0.1", [&] {
      if (i % 3 == 0) agent.Stop();
      return 1;
    });
    agent.OnSession([&](const snmp::SessionEvent& event) {
      if (event.connected && i % 5 == 0) agent.Stop();
    });
    agent.Start();
    if (i % 2 == 0) agent.WaitUntilConnected(std::chrono::milliseconds(i));
    agent.Stop();
    EXPECT_FALSE(agent.Connected());
    agent.Start();
  }
  end = true;
  serving.join();
}

}  // namespace
