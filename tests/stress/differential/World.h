// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_DIFFERENTIAL_WORLD_H_
#define SNMPSUBAGENT_TESTS_DIFFERENTIAL_WORLD_H_

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "RandomRequests.h"
#include "SubAgent.h"
#include "TablePair.h"
#include "support/NodeRegistry.h"
#include "support/Random.h"
#include "testkit/agentx/Codec.h"
#include "testkit/agentx/MasterSession.h"

// Tables that a subagent serves in both ways, and a master agent that sends
// requests to both and compares the results.
class World {
 public:
  // `seed` determines everything.
  World(const std::vector<Shape>& shapes, std::uint32_t seed);
  ~World();

  World(const World&) = delete;
  World& operator=(const World&) = delete;

  // Sends a random request both ways, sometimes after rows have changed.
  // Returns what differed, or nothing.
  std::string Step();

 private:
  // A request, or the phases of a SET with requests between them.
  using Requests = std::vector<testkit::agentx::Body>;

  // A result: a response or a notification as its bytes, or a line of the log.
  struct Deed {
    bool operator==(const Deed& other) const {
      return bytes == other.bytes && text == other.text;
    }

    testkit::agentx::Bytes bytes;
    std::string text;
  };

  Requests RandomExchange();
  std::vector<Deed> Exchange(Way way, const Requests& requests);
  // Differences in what the rows show besides.
  std::string CompareTraces() const;

  Random random_;
  support::NodeRegistry registry_;
  std::deque<TablePair> tables_;
  RandomRequests requests_;
  std::unique_ptr<testkit::agentx::MasterSession> master_;
  std::unique_ptr<SubAgent> subAgent_;
};

#endif  // SNMPSUBAGENT_TESTS_DIFFERENTIAL_WORLD_H_
