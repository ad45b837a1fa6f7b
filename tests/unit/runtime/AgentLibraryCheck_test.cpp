// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "adapter/AgentLibraryCheck.h"

#include <dlfcn.h>
#include <gmock/gmock.h>

#include <fstream>
#include <string>

#include "CallJournal.h"
#include "LoggedLines.h"
#include "LonelySubAgent.h"
#include "NetSNMP.h"
#include "support/Threads.h"
#include "testkit/Deadlines.h"
#include "testkit/ScratchDirectory.h"
#include "testkit/WaitFor.h"

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;

const char* version = PACKAGE_VERSION;

// A copy of the agent library's file, loaded beside it.
class SecondAgentLibrary {
 public:
  SecondAgentLibrary() {
    Dl_info first{};
    dladdr(dlsym(RTLD_DEFAULT, "netsnmp_subtree_find"), &first);
    // As a stream: an emulator leads open() into its root, but not each stat().
    std::ofstream(file_) << std::ifstream(first.dli_fname).rdbuf();
    handle_ = dlopen(file_.c_str(), RTLD_LAZY | RTLD_LOCAL);
  }
  ~SecondAgentLibrary() {
    if (IsLoaded()) dlclose(handle_);
  }
  bool IsLoaded() const { return handle_ != nullptr; }
  const std::string& File() const { return file_; }

 private:
  const testkit::ScratchDirectory folder_;
  const std::string file_ = folder_.Path() / "libnetsnmpagent.so.99";
  void* handle_ = nullptr;
};

TEST(NetSnmp, IsUsableAsItIs) {
  EXPECT_THAT(WhatMakesNetSnmpUnusable(), IsEmpty());
}

TEST(NetSnmp, IsUsableInALaterPatchVersion) {
  version = "5.9.77";
  EXPECT_THAT(WhatMakesNetSnmpUnusable(), IsEmpty());
}

TEST(NetSnmp, IsUnusableInAnotherMinorVersion) {
  for (const char* other : {"5.10.pre2", "5.10", "5.8", "6.9.3", "5", ""}) {
    version = other;
    EXPECT_THAT(WhatMakesNetSnmpUnusable(),
                "built with Net-SNMP " PACKAGE_VERSION
                ", but this process has " +
                    std::string(other));
  }
}

TEST(NetSnmp, IsUnusableIfThereAreTwo) {
  const SecondAgentLibrary second;
  ASSERT_TRUE(second.IsLoaded());
  EXPECT_THAT(
      WhatMakesNetSnmpUnusable(),
      AllOf(HasSubstr("there is more than one Net-SNMP in this process: "),
            EndsWith(" and " + second.File())));
}

TEST(SubAgent, LogsWhyNetSnmpIsUnusableAndEnds) {
  version = "5.10";
  LonelySubAgent subAgent;
  const std::size_t threads = support::ThreadCount();
  EXPECT_EQ(subAgent.Start(), 1);
  ASSERT_TRUE(testkit::WaitFor([] { return !LoggedLines().empty(); },
                               testkit::Deadlines::Pass()));
  ASSERT_TRUE(support::WaitForThreadCount(threads));
  EXPECT_FALSE(subAgent.IsRunning());
  EXPECT_THAT(LoggedLines(),
              ElementsAre(Pair(3U,
                               "SNMPSubAgent::initialize(): built with "
                               "Net-SNMP " PACKAGE_VERSION
                               ", but this process has 5.10")));
  EXPECT_THAT(CallJournal::Get().Calls(), IsEmpty());
}

}  // namespace

// Stands before the one of Net-SNMP in this program.
extern "C" const char* netsnmp_get_version() { return version; }
