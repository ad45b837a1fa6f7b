// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gmock/gmock.h>
#include <netinet/in.h>
#include <signal.h>
#include <snmpsubagent.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <regex>
#include <thread>

#include "testkit/Command.h"
#include "testkit/Daemon.h"
#include "testkit/Deadlines.h"
#include "testkit/FileDescriptor.h"
#include "testkit/LoopbackPort.h"
#include "testkit/ScratchDirectory.h"
#include "testkit/WaitFor.h"

namespace snmp = snmpsubagent;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using ::testing::StartsWith;

namespace {

constexpr char kOid[] = "1.3.6.1.4.1.32473.77";
// Too long for a name of a host, so that nobody is asked for it.
const std::string kNoHost(70, 'x');

// What the program says of a set-up.
struct Said {
  int exitStatus;
  std::string cause;  // of the one finding; "" if there is none
  std::string text;
  std::string change;
};

std::string Field(const std::string& json, const std::string& name) {
  std::smatch match;
  const std::regex field("\"" + name + "\": \"((?:[^\"\\\\]|\\\\.)*)\"");
  return std::regex_search(json, match, field) ? match[1].str() : "";
}

Said SaidBy(std::vector<std::string> command,
            const std::vector<std::string>& words) {
  command.insert(command.end(), {"connection", "--json"});
  command.insert(command.end(), words.begin(), words.end());
  const testkit::CommandResult result = testkit::Command(command, {}).Result();
  EXPECT_EQ(result.error, "");
  return {result.exitCode, Field(result.out, "cause"),
          Field(result.out, "text"), Field(result.out, "change")};
}

Said Check(const std::vector<std::string>& words) {
  return SaidBy({CHECK_PROGRAM}, words);
}

// By a user who is not root, whom no permission stops, with a copy of the
// program where anybody may run it.
Said CheckUnprivileged(const std::vector<std::string>& words) {
  if (geteuid() != 0) return Check(words);
  const testkit::ScratchDirectory folder;
  chmod(folder.Path().c_str(), 0755);
  const std::string program = folder.Path() / "check";
  std::filesystem::copy_file(CHECK_PROGRAM, program);
  return SaidBy(
      {"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups", program},
      words);
}

std::string Tcp(const testkit::LoopbackPort& port) {
  return "tcp:" + port.Address();
}

// A snmpd of its own with this configuration, which says `agentX` of AgentX.
class Snmpd {
 public:
  explicit Snmpd(const std::string& access,
                 const std::string& agentX = "master agentx\n")
      : daemon_("snmpd", "agentAddress udp:" + snmp_.Address() + "\n" +
                             "agentXSocket " + Tcp(agentX_) + "\n" + agentX +
                             access + "\n") {
    daemon_.Start({"-I", "vacm_conf,nsModuleTable,system_mib"});
  }

  std::string Config() const { return daemon_.Directory() / "daemon.conf"; }
  std::string AgentX() const { return Tcp(agentX_); }
  std::string Address() const { return snmp_.Address(); }
  void Signal(int number) const { daemon_.Signal(number); }

  Said Check(std::vector<std::string> more = {}) const {
    std::vector<std::string> words{"-C", Config(), "-x", AgentX()};
    words.insert(words.end(), more.begin(), more.end());
    words.push_back(Address());
    return ::Check(words);
  }

 private:
  testkit::LoopbackPort snmp_;
  testkit::LoopbackPort agentX_;
  testkit::Daemon daemon_;
};

// A subagent that has the OID and an object below.
class SubAgent {
 public:
  explicit SubAgent(const Snmpd& snmpd)
      : agent_("the owner", OptionsFor(snmpd)), module_(agent_, kOid) {
    agent_.Start();
    const bool registered =
        testkit::WaitFor([this] { return module_.IsRegistered(); },
                         testkit::Deadlines::Session());
    if (!registered) throw std::runtime_error("it is not registered");
  }

 private:
  static snmp::AgentOptions OptionsFor(const Snmpd& snmpd) {
    snmp::AgentOptions options;
    options.master = snmpd.AgentX();
    options.log = [](snmp::LogLevel, const std::string&) {};
    return options;
  }

  snmp::Agent agent_;
  snmp::Module module_;
  snmp::Scalar<int> level_{module_, "1", 7};
};

// A socket that is bound to `path`, and listens if wanted.
testkit::FileDescriptor UnixSocket(const std::string& path, bool listens) {
  testkit::FileDescriptor descriptor(socket(AF_UNIX, SOCK_STREAM, 0));
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  EXPECT_EQ(bind(descriptor.Number(), reinterpret_cast<sockaddr*>(&address),
                 sizeof address),
            0);
  if (listens) {
    EXPECT_EQ(listen(descriptor.Number(), 1), 0);
  }
  return descriptor;
}

// A TCP server that answers each connection with a greeting of its own.
class OtherServer {
 public:
  OtherServer() : descriptor_(socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port_.Number()));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const int reuse = 1;
    setsockopt(descriptor_.Number(), SOL_SOCKET, SO_REUSEADDR, &reuse,
               sizeof reuse);
    EXPECT_EQ(bind(descriptor_.Number(), reinterpret_cast<sockaddr*>(&address),
                   sizeof address),
              0);
    EXPECT_EQ(listen(descriptor_.Number(), 1), 0);
    thread_ = std::thread([this] { Serve(); });
  }
  ~OtherServer() {
    shutdown(descriptor_.Number(), SHUT_RDWR);
    thread_.join();
  }
  std::string Address() const { return Tcp(port_); }

 private:
  void Serve() {
    static constexpr char kGreeting[] = "220 mail.example.org ready for mail\n";
    for (;;) {
      const testkit::FileDescriptor one(
          accept(descriptor_.Number(), nullptr, nullptr));
      if (one.Number() < 0) return;
      send(one.Number(), kGreeting, sizeof kGreeting - 1, MSG_NOSIGNAL);
      char octet = 0;
      recv(one.Number(), &octet, 1, 0);
    }
  }

  testkit::LoopbackPort port_;
  testkit::FileDescriptor descriptor_;
  std::thread thread_;
};

TEST(CheckOfAConnection, FindsNothingWrongWithOneThatWorks) {
  const Snmpd snmpd("rocommunity public 127.0.0.1");
  const SubAgent subAgent(snmpd);
  const Said said = snmpd.Check({"-o", kOid, "-p", CHECK_PROGRAM});
  EXPECT_EQ(said.cause, "");
  EXPECT_EQ(said.exitStatus, 0);
}

TEST(CheckOfAConnection, TakesObjectsFartherBelowForTheSubagents) {
  const Snmpd snmpd("rocommunity public 127.0.0.1");
  const SubAgent subAgent(snmpd);
  EXPECT_EQ(snmpd.Check({"-o", "1.3.6.1.4.1.32473"}).cause, "");
}

TEST(CheckOfAConnection, NamesAProgramThatIsNotThere) {
  const Said said = Check({"-p", "/nonexistent/service"});
  EXPECT_EQ(said.cause, "programMissing");
  EXPECT_EQ(said.exitStatus, 1);
}

TEST(CheckOfAConnection, NamesALibraryThatCannotBeLoaded) {
  const Said said = Check({"-p", UNLOADABLE_PROGRAM});
  EXPECT_EQ(said.cause, "libraryMissing");
  EXPECT_THAT(said.text, HasSubstr("libcheck_unloadable.so => not found"));
  EXPECT_THAT(said.change, HasSubstr("ldconfig"));
}

TEST(CheckOfAConnection, NamesAnAddressThatIsNone) {
  const Said said = Check({"-x", "localhost:705"});
  EXPECT_EQ(said.cause, "badAddress");
  EXPECT_THAT(said.change, HasSubstr("tcp:host:port"));
}

TEST(CheckOfAConnection, NamesAPortThatIsNone) {
  EXPECT_EQ(Check({"-x", "tcp:localhost:agentx"}).cause, "badAddress");
}

TEST(CheckOfAConnection, NamesAPathThatIsTooLong) {
  EXPECT_EQ(Check({"-x", "unix:/" + std::string(200, 'x')}).cause,
            "badAddress");
}

TEST(CheckOfAConnection, NamesAHostThatIsNotKnown) {
  const Said said = Check({"-x", "tcp:" + kNoHost + ":705"});
  EXPECT_EQ(said.cause, "hostUnknown");
  EXPECT_THAT(said.text, HasSubstr(kNoHost));
  EXPECT_THAT(said.change, HasSubstr("in /etc/hosts"));
}

TEST(CheckOfAConnection, NamesASocketThatIsNotThere) {
  const testkit::ScratchDirectory folder;
  const std::string config =
      folder.Write("snmpd.conf", "master agentx\nagentXSocket " +
                                     (folder.Path() / "master").string());
  const Said said = Check({"-x", folder.Path() / "master", "-C", config});
  EXPECT_EQ(said.cause, "socketMissing");
  EXPECT_THAT(said.change, HasSubstr("systemctl start snmpd"));
}

TEST(CheckOfAConnection, NamesAFolderOfASocketThatIsNotThere) {
  const Said said =
      Check({"-x", "unix:/nonexistent/master", "-C", "/nonexistent/conf"});
  EXPECT_EQ(said.cause, "socketMissing");
  EXPECT_EQ(said.text, "there is no folder /nonexistent");
}

TEST(CheckOfAConnection, NamesASocketThatIsLeftOver) {
  const testkit::ScratchDirectory folder;
  const std::string path = folder.Path() / "master";
  const testkit::FileDescriptor bound = UnixSocket(path, false);
  const Said said = Check({"-x", path, "-C", "/nonexistent/conf"});
  EXPECT_EQ(said.cause, "socketStale");
  EXPECT_THAT(said.change, HasSubstr("systemctl start snmpd"));
}

TEST(CheckOfAConnection, NamesAFileThatIsNoSocket) {
  const testkit::ScratchDirectory folder;
  const std::string path = folder.Write("master", "");
  const Said said = Check({"-x", path, "-C", "/nonexistent/conf"});
  EXPECT_EQ(said.cause, "notASocket");
  EXPECT_THAT(said.change, HasSubstr("remove " + path));
}

TEST(CheckOfAConnection, NamesASocketThatThisUserMayNotWriteTo) {
  const testkit::ScratchDirectory folder;
  chmod(folder.Path().c_str(), 0755);
  const std::string path = folder.Path() / "master";
  const testkit::FileDescriptor listening = UnixSocket(path, true);
  chmod(path.c_str(), 0);
  const Said said = CheckUnprivileged({"-x", path, "-C", "/etc/snmpd.conf"});
  EXPECT_EQ(said.cause, "noPermission");
  EXPECT_THAT(said.text, HasSubstr("may not write to " + path));
  EXPECT_THAT(said.change,
              StartsWith("in /etc/snmpd.conf: agentXPerms 0660 0750 root "));
}

TEST(CheckOfAConnection, NamesAFolderThatThisUserMayNotSearch) {
  const testkit::ScratchDirectory folder;
  const std::string path = folder.Path() / "master";
  const testkit::FileDescriptor listening = UnixSocket(path, true);
  chmod(folder.Path().c_str(), 0);
  const Said said = CheckUnprivileged({"-x", path, "-C", "/etc/snmpd.conf"});
  chmod(folder.Path().c_str(), 0700);
  EXPECT_EQ(said.cause, "noPermission");
  EXPECT_THAT(said.text, HasSubstr("may not search " + folder.Path().string()));
}

TEST(CheckOfAConnection, NamesAMasterThatTakesNoSubagents) {
  const Snmpd snmpd("rocommunity public", "");
  const Said said = snmpd.Check();
  EXPECT_EQ(said.cause, "agentXOff");
  EXPECT_EQ(said.change, "in " + snmpd.Config() + ": master agentx");
}

TEST(CheckOfAConnection, NamesACommentThatShouldBeALine) {
  const Snmpd snmpd("rocommunity public", "#  master agentx\n");
  const Said said = snmpd.Check();
  EXPECT_EQ(said.cause, "agentXOff");
  EXPECT_EQ(said.change, "in " + snmpd.Config() + ":3: master agentx");
}

TEST(CheckOfAConnection, NamesALineThatTurnsSubagentsOff) {
  const Snmpd snmpd("rocommunity public", "master no\n");
  const Said said = snmpd.Check();
  EXPECT_EQ(said.cause, "agentXOff");
  EXPECT_THAT(said.text, HasSubstr("'master no'"));
}

TEST(CheckOfAConnection, NamesThePortThatTheMasterHasInstead) {
  const Snmpd snmpd("rocommunity public");
  const testkit::LoopbackPort other;
  const Said said = Check({"-C", snmpd.Config(), "-x", Tcp(other)});
  EXPECT_EQ(said.cause, "otherAddress");
  EXPECT_THAT(said.text, HasSubstr("snmpd listens at " + snmpd.AgentX()));
  EXPECT_THAT(said.change, StartsWith("in " + snmpd.Config() +
                                      ":2: agentXSocket " + Tcp(other)));
}

TEST(CheckOfAConnection, NamesTheTransportThatTheMasterHasInstead) {
  const Snmpd snmpd("rocommunity public");
  const Said said =
      Check({"-C", snmpd.Config(), "-x", "unix:/nonexistent/master"});
  EXPECT_EQ(said.cause, "otherAddress");
  EXPECT_THAT(said.text, HasSubstr("snmpd listens at " + snmpd.AgentX()));
}

TEST(CheckOfAConnection, FindsTheLinesOfFilesThatAreIncluded) {
  const testkit::ScratchDirectory folder;
  const testkit::LoopbackPort port;
  const std::string more =
      folder.Write("more.conf", "agentXSocket tcp:localhost:1\n");
  const std::string config = folder.Write(
      "snmpd", "master agentx\nincludeDir " + folder.Path().string() + "\n");
  const Said said = Check({"-C", config, "-x", Tcp(port)});
  EXPECT_EQ(said.cause, "otherAddress");
  EXPECT_THAT(said.change, HasSubstr(more + ":1"));
}

TEST(CheckOfAConnection, NamesAPortWhereNobodyListens) {
  const testkit::LoopbackPort port;
  const Said said = Check({"-x", Tcp(port), "-C", "/nonexistent/conf"});
  EXPECT_EQ(said.cause, "nobodyListens");
  EXPECT_THAT(said.change, AllOf(HasSubstr("systemctl start snmpd"),
                                 HasSubstr("agentXSocket " + Tcp(port))));
}

TEST(CheckOfAConnection, NamesAServerThatSpeaksNoAgentX) {
  const OtherServer server;
  EXPECT_EQ(Check({"-x", server.Address()}).cause, "noAgentX");
}

TEST(CheckOfAConnection, NamesAMasterThatHangs) {
  const Snmpd snmpd("rocommunity public");
  snmpd.Signal(SIGSTOP);
  const Said said = snmpd.Check({"-t", "0.3"});
  snmpd.Signal(SIGCONT);
  EXPECT_EQ(said.cause, "masterSilent");
  EXPECT_THAT(said.change, HasSubstr("systemctl restart snmpd"));
}

TEST(CheckOfAConnection, NamesTheSessionThatHasTheOid) {
  const Snmpd snmpd("rocommunity public 127.0.0.1");
  const SubAgent subAgent(snmpd);
  const Said said = snmpd.Check({"-o", kOid, "--stopped"});
  EXPECT_EQ(said.cause, "registrationTaken");
  EXPECT_THAT(said.text, MatchesRegex(".* by AgentX subagent [0-9]+"));
}

TEST(CheckOfAConnection, NamesTheModuleOfTheMasterThatHasTheOid) {
  const Snmpd snmpd("rocommunity public 127.0.0.1");
  const Said said = snmpd.Check({"-o", "1.3.6.1.2.1.1"});
  EXPECT_EQ(said.cause, "registrationTaken");
  EXPECT_THAT(said.text, HasSubstr("by mibII/sysDescr"));
}

TEST(CheckOfAConnection, NamesAHostThatManagersDoNotFind) {
  const Snmpd snmpd("rocommunity public 127.0.0.1");
  const Said said =
      Check({"-C", snmpd.Config(), "-x", snmpd.AgentX(), "-o", kOid, kNoHost});
  EXPECT_EQ(said.cause, "managerHostUnknown");
}

TEST(CheckOfAConnection, NamesAPortThatManagersAskInVain) {
  const Snmpd snmpd("rocommunity public 127.0.0.1");
  const testkit::LoopbackPort port;
  const Said said = Check({"-C", snmpd.Config(), "-x", snmpd.AgentX(), "-t",
                           "0.3", "-o", kOid, port.Address()});
  EXPECT_EQ(said.cause, "noSnmpAgent");
  EXPECT_THAT(said.change, HasSubstr("agentAddress udp:" + port.Address()));
}

TEST(CheckOfAConnection, NamesACommunityThatIsNotKnown) {
  const Snmpd snmpd("rocommunity public 127.0.0.1");
  const Said said = snmpd.Check({"-o", kOid, "-c", "secret", "-t", "0.3"});
  EXPECT_EQ(said.cause, "communityUnknown");
  EXPECT_EQ(said.change,
            "in " + snmpd.Config() + ": rocommunity secret default");
}

TEST(CheckOfAConnection, NamesACommunityThatIsForOtherSources) {
  const Snmpd snmpd("rocommunity public 192.0.2.1");
  const Said said = snmpd.Check({"-o", kOid, "-t", "0.3"});
  EXPECT_EQ(said.cause, "communityUnknown");
  EXPECT_THAT(said.text, HasSubstr("'rocommunity public 192.0.2.1'"));
  EXPECT_THAT(said.change, StartsWith("in " + snmpd.Config() + ":4: "));
}

TEST(CheckOfAConnection, NamesACommunityThatIsForAnotherSubtree) {
  const Snmpd snmpd("rocommunity public 127.0.0.1 .1.3.6.1.2.1");
  const Said said = snmpd.Check({"-o", kOid});
  EXPECT_EQ(said.cause, "viewHides");
  EXPECT_EQ(said.change,
            "in " + snmpd.Config() + ":4: rocommunity public 127.0.0.1");
}

TEST(CheckOfAConnection, NamesAViewWithoutTheOid) {
  const Snmpd snmpd(
      "view standard included .1.3.6.1.2.1\n"
      "rocommunity public 127.0.0.1 -V standard");
  const SubAgent subAgent(snmpd);
  const Said said = snmpd.Check({"-o", kOid});
  EXPECT_EQ(said.cause, "viewHides");
  EXPECT_EQ(said.change,
            "in " + snmpd.Config() + ": view standard included " + kOid);
}

TEST(CheckOfAConnection, NamesAGroupWhoseViewIsWithoutTheOid) {
  const Snmpd snmpd(
      "view standard included .1.3.6.1.2.1\n"
      "com2sec everybody 127.0.0.1 public\n"
      "group readers v2c everybody\n"
      "access readers \"\" any noauth exact standard none none");
  const Said said = snmpd.Check({"-o", kOid});
  EXPECT_EQ(said.cause, "viewHides");
  EXPECT_EQ(said.change,
            "in " + snmpd.Config() + ": view standard included " + kOid);
}

TEST(CheckOfAConnection, NamesAnOidThatNobodyHasRegistered) {
  const Snmpd snmpd("rocommunity public 127.0.0.1");
  const Said said = snmpd.Check({"-o", kOid});
  EXPECT_EQ(said.cause, "noObjects");
  EXPECT_THAT(said.change, HasSubstr("start the subagent"));
}

TEST(CheckOfAConnection, LeavesNothingRegistered) {
  const Snmpd snmpd("rocommunity public 127.0.0.1");
  snmpd.Check({"-o", kOid});
  EXPECT_EQ(snmpd.Check({"-o", kOid}).cause, "noObjects");
}

TEST(CheckOfAConnection, CannotBeForAnOidThatIsNone) {
  const testkit::CommandResult result =
      testkit::Command({CHECK_PROGRAM, "connection", "-o", "ifTable"}, {})
          .Result();
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_THAT(result.error, HasSubstr("ifTable is no OID"));
}

}  // namespace
