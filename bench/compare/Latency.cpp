// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <chrono>
#include <memory>
#include <thread>

#include "compare/Contest.h"
#include "compare/Experiments.h"
#include "compare/Statistics.h"
#include "master/DirectMaster.h"

namespace agentx = testkit::agentx;

namespace {

constexpr unsigned int kScalars = 100;
constexpr unsigned int kRequests = 60;
constexpr std::size_t kOutstanding = 16;
// Long enough for TCP to treat the connection as interactive.
constexpr std::chrono::milliseconds kPause{500};

// A subagent that gets many requests at once.
class Burst {
 public:
  explicit Burst(const Publisher& publisher)
      : Burst(publisher, std::make_unique<TcpMaster>()) {}

  // Sends the requests after a pause.
  std::vector<DirectMaster::Timed> Run(
      const std::vector<agentx::Body>& requests) {
    std::this_thread::sleep_for(kPause);
    return master_.PutAll(requests, kOutstanding);
  }

  const Subject& TheSubject() const { return subject_; }

 private:
  Burst(const Publisher& publisher, std::unique_ptr<DirectMaster> master)
      : master_(*master), subject_(publisher, kScalars, std::move(master)) {}

  DirectMaster& master_;  // the subject's
  Subject subject_;
};

std::vector<double> Latencies(const std::vector<DirectMaster::Timed>& answers) {
  std::vector<double> latencies;
  for (const DirectMaster::Timed& answer : answers) {
    latencies.push_back(answer.latency.count());
  }
  return latencies;
}

std::vector<agentx::Body> Requests() {
  const Workload workload = GetNextScalar(kScalars);
  std::vector<agentx::Body> requests;
  for (unsigned int step = 0; step < kRequests; ++step) {
    requests.push_back(workload(step));
  }
  return requests;
}

// The latencies of all bursts, and the 99th percentile of each.
struct Distribution {
  void Add(const std::vector<double>& burst) {
    all.insert(all.end(), burst.begin(), burst.end());
    tails.push_back(Quantile(burst, 0.99));
  }

  std::vector<double> all;
  std::vector<double> tails;
};

void AddCurve(Report& report, const std::string& subject,
              const Distribution& distribution) {
  for (const double percentile :
       {1., 5., 10., 25., 50., 75., 90., 95., 99., 100.}) {
    report.AddPoint("latency", subject, percentile,
                    Quantile(distribution.all, percentile / 100));
  }
}

}  // namespace

void MeasureLatency(Setup& setup) {
  Burst library({Base::kNodeClasses, "scalars"});
  Burst peer({Base::kAgentLibrary, "scalars"});
  Distribution ofLibrary;
  Distribution ofPeer;
  const std::vector<agentx::Body> requests = Requests();
  for (int round = 0; round < setup.Choose(8, 30); ++round) {
    const auto answers = library.Run(requests);
    const auto answersOfPeer = peer.Run(requests);
    for (unsigned int i = 0; i < kRequests; ++i) {
      RequireSameAnswer(requests[i], library.TheSubject(), answers[i].response,
                        peer.TheSubject(), answersOfPeer[i].response);
    }
    ofLibrary.Add(Latencies(answers));
    ofPeer.Add(Latencies(answersOfPeer));
  }
  const std::string name = peer.TheSubject().Name();
  setup.report.Add({"latency of 60 GETNEXTs, 16 outstanding, 99 %", "ms", name,
                    ofLibrary.tails, ofPeer.tails, 0.1});
  AddCurve(setup.report, "library", ofLibrary);
  AddCurve(setup.report, name, ofPeer);
}
