// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "check/connection/CheckConnection.h"

#include <atomic>
#include <exception>
#include <thread>

#include "check/connection/ManagerCheck.h"
#include "check/connection/MasterSocket.h"
#include "check/connection/ProbeSession.h"
#include "check/connection/ProgramCheck.h"
#include "check/connection/SnmpdConfig.h"

namespace snmpsubagent::check {
namespace {

snmpsubagent::Oid ParsedOid(const std::string& text) {
  try {
    return snmpsubagent::Oid(text);
  } catch (const std::exception& error) {
    throw CannotCheck(text + " is no OID: " + error.what());
  }
}

Oid NameOf(const snmpsubagent::Oid& oid) { return {oid.begin(), oid.end()}; }

class ConnectionCheck {
 public:
  explicit ConnectionCheck(const ConnectionOptions& options)
      : options_(options),
        config_(options.config),
        manager_(options.manager, config_) {}

  ConnectionReport All() {
    if (!options_.program.empty() && !Program()) return report_;
    const auto address = AgentXAddress::Parse(options_.master);
    if (!address) {
      Add({Cause::BadAddress,
           options_.master + " is no address of a master agent",
           "unix:/path, tcp:host:port or tcp6:[address]:port in the subagent"});
      return report_;
    }
    const MasterSocket socket(*address, config_, options_.manager.timeout);
    if (socket.Failure()) {
      Add(*socket.Failure());
      return report_;
    }
    Pass("something listens at " + address->text);
    ProbeSession session(socket.Descriptor(), options_.manager.timeout);
    if (Open(session) && !options_.oid.empty()) {
      Subtree(session, ParsedOid(options_.oid));
    }
    session.Close();
    return report_;
  }

 private:
  bool Program() {
    const auto failure = CheckProgram(options_.program);
    if (failure) {
      Add(*failure);
    } else {
      Pass(options_.program + " has all libraries");
    }
    return !failure;
  }

  bool Open(ProbeSession& session) {
    const auto failure = session.Open();
    if (!failure) {
      Pass("it is a master agent, and takes a session");
      return true;
    }
    if (failure->empty()) {
      Add({Cause::MasterSilent,
           "who listens at " + options_.master + " does not answer",
           "look whether snmpd hangs, in its log, and restart it: systemctl "
           "restart snmpd"});
    } else if (failure->find("refused") != std::string::npos) {
      Add({Cause::SessionRefused, "the master agent: " + *failure,
           "look into the log of snmpd"});
    } else {
      Add({Cause::NoAgentX,
           "who listens at " + options_.master +
               " is no master agent: " + *failure,
           "the port in the subagent, or in " + config_.File() +
               ": agentXSocket"});
    }
    return false;
  }

  // Whether a subagent may have the OID, and managers see what is below.
  void Subtree(ProbeSession& session, const snmpsubagent::Oid& oid) {
    const auto answer = session.Register(oid);
    session.Unregister();
    const bool isTaken = answer == agentx::Error::DuplicateRegistration;
    if (answer == agentx::Error::None) {
      Pass(options_.oid + " can be registered");
    } else if (!isTaken) {
      Add({Cause::RegistrationRefused,
           "the master agent refuses " + options_.oid + ": " +
               (answer ? agentx::ToString(*answer) : "no answer"),
           "the OID, context or priority in the subagent"});
      return;
    }
    if (auto failure = manager_.Reach()) {
      Add(*failure);
      return;
    }
    Pass("managers reach the agent at " + options_.manager.address);
    const Seen seen = See(session, oid);
    if (!seen.probe) {
      Add(manager_.ViewHides(options_.oid));
      return;
    }
    Pass("managers see what is below " + options_.oid);
    if (isTaken || seen.objects) {
      JudgeOwner(seen);
    } else {
      Add({Cause::NoObjects, "nobody has registered " + options_.oid,
           "start the subagent, and look into its log: it connects to another "
           "master agent, or registers another OID"});
    }
  }

  struct Seen {
    bool probe = false;    // an object of ours
    bool objects = false;  // one of another's
    std::string owner;     // as the agent names it
  };

  // What a manager sees below the OID, with an object there that we serve.
  Seen See(ProbeSession& session, const snmpsubagent::Oid& oid) {
    const snmpsubagent::Oid probe = oid + snmpsubagent::Oid{kProbeSubtree};
    Seen seen;
    if (session.Register(probe) != agentx::Error::None) return seen;
    std::atomic<bool> done{false};
    std::thread manager([&] {
      manager_.AsksFor(NameOf(probe));
      seen.probe = session.Asked();
      seen.objects = manager_.HasObjectsBelow(NameOf(oid));
      seen.owner = manager_.OwnerOf(NameOf(oid));
      done = true;
    });
    session.Serve(done);
    manager.join();
    session.Unregister();
    return seen;
  }

  static bool IsSubagent(const std::string& owner) {
    return owner.empty() || owner.find("AgentX") == 0;
  }

  static std::string Remedy(const std::string& owner) {
    if (IsSubagent(owner)) {
      return "stop the other subagent, or give one of them another OID";
    }
    return "give the subagent another OID, or start snmpd without its own "
           "module: snmpd -I -NAME, with the NAME from the end of " +
           owner;
  }

  // What snmpd serves itself is not the subagent's for sure.
  void JudgeOwner(const Seen& seen) {
    if (IsSubagent(seen.owner) && seen.objects && !options_.stopped) {
      Pass("managers see objects there" +
           (seen.owner.empty() ? "" : ", of " + seen.owner));
      return;
    }
    Add({Cause::RegistrationTaken,
         options_.oid + ", or a part of it, is registered already, " +
             (seen.owner.empty()
                  ? "and the community does not see nsModuleTable, which says "
                    "by whom"
                  : "by " + seen.owner),
         Remedy(seen.owner)});
  }

  void Add(const Diagnosis& finding) { report_.findings.push_back(finding); }
  void Pass(const std::string& text) { report_.passed.push_back(text); }

  const ConnectionOptions& options_;
  const SnmpdConfig config_;
  ManagerCheck manager_;
  ConnectionReport report_;
};

}  // namespace

ConnectionReport CheckConnection(const ConnectionOptions& options) {
  if (!options.oid.empty()) ParsedOid(options.oid);
  return ConnectionCheck(options).All();
}

}  // namespace snmpsubagent::check
