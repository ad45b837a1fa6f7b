// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <boost/thread.hpp>
#include <stdexcept>

#include "NetSNMPTrapNode.h"
#include "adapter/ExceptionBarrier.h"
#include "support/DataNodeTest.h"
#include "support/Request.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DataNodeHandler : public DataNodeTest {
 protected:
  // Lets the scalar serve a SET from its first phase to COMMIT; returns the
  // status of the last phase.
  int SetFanSpeed(long value) {
    int status = 0;
    for (const int mode : {MODE_SET_RESERVE1, MODE_SET_RESERVE2,
                           MODE_SET_ACTION, MODE_SET_COMMIT}) {
      Request request(kFanSpeedOid, mode);
      request.SetInteger(value);
      status = request.HandleAs("fanSpeed");
      EXPECT_EQ(request.Status(), status) << "mode " << mode;
    }
    return status;
  }
};

TEST_F(DataNodeHandler, LeavesTheRequestAloneWithoutARegistry) {
  NetSNMPNode::DeleteNodeMap();
  Request request(kFanSpeedOid, MODE_GET);
  EXPECT_EQ(request.HandleAs("fanSpeed"), SNMP_ERR_GENERR);
  EXPECT_EQ(request.Status(), SNMP_ERR_NOERROR);
  EXPECT_FALSE(request.Processed());
  EXPECT_EQ(request.Varbind().type, ASN_NULL);
}

TEST_F(DataNodeHandler, FindsNoScalarUnderOtherNames) {
  BuildFanSpeed();
  Oid oid = kOtherOid;
  new NetSNMPTrapNode(oid.data(), Length(oid), "fanAlarm");
  NetSNMPNode::nodeMap_->emplace("hole", nullptr);
  log_.Lines();
  for (const char* name : {"unknown", "fanAlarm", "hole"}) {
    Request request(kFanSpeedOid, MODE_GET);
    EXPECT_EQ(request.HandleAs(name), SNMP_ERR_NOSUCHNAME) << name;
    EXPECT_EQ(request.Status(), SNMP_ERR_NOSUCHNAME) << name;
    EXPECT_EQ(request.Varbind().type, ASN_NULL) << name;
  }
  EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(DataNodeHandler, AnswersGetAndGetNextWithTheValue) {
  BuildFanSpeed();
  for (const int mode : {MODE_GET, MODE_GETNEXT}) {
    Request request(kFanSpeedOid, mode);
    EXPECT_EQ(request.HandleAs("fanSpeed"), SNMP_ERR_NOERROR);
    EXPECT_EQ(request.Status(), SNMP_ERR_NOERROR);
    EXPECT_EQ(request.Varbind().type, ASN_INTEGER);
    EXPECT_EQ(*request.Varbind().val.integer, 7);
  }
}

TEST_F(DataNodeHandler, WritesTheValueInTheCommitPhase) {
  BuildFanSpeed();
  for (const int mode :
       {MODE_SET_RESERVE1, MODE_SET_RESERVE2, MODE_SET_ACTION}) {
    Request request(kFanSpeedOid, mode);
    request.SetInteger(9);
    EXPECT_EQ(request.HandleAs("fanSpeed"), SNMP_ERR_NOERROR);
    EXPECT_EQ(speed_, 7) << "mode " << mode;
  }
  Request commit(kFanSpeedOid, MODE_SET_COMMIT);
  commit.SetInteger(9);
  EXPECT_EQ(commit.HandleAs("fanSpeed"), SNMP_ERR_NOERROR);
  EXPECT_EQ(commit.Status(), SNMP_ERR_NOERROR);
  EXPECT_EQ(speed_, 9);
}

TEST_F(DataNodeHandler, AnswersFreeAndUndoWithBadValue) {
  BuildFanSpeed();
  for (const int mode : {MODE_SET_FREE, MODE_SET_UNDO}) {
    Request request(kFanSpeedOid, mode);
    EXPECT_EQ(request.HandleAs("fanSpeed"), SNMP_ERR_BADVALUE);
    EXPECT_EQ(request.Status(), SNMP_ERR_BADVALUE);
  }
}

TEST_F(DataNodeHandler, RefusesASetOfAReadOnlyValue) {
  Build(kFanSpeedOid, "fanSpeed",
        NetSNMPIntNodeData(&speed_, eNodeAccessReadOnly));
  Request request(kFanSpeedOid, MODE_SET_RESERVE1);
  request.SetInteger(9);
  EXPECT_EQ(request.HandleAs("fanSpeed"), SNMP_ERR_NOTWRITABLE);
  EXPECT_EQ(request.Status(), SNMP_ERR_NOTWRITABLE);
}

TEST_F(DataNodeHandler, AnswersBadValueForAScalarWithoutAValue) {
  auto* const node = BuildFanSpeed();
  delete node->nodeData_;
  node->nodeData_ = nullptr;
  Request request(kFanSpeedOid, MODE_GET);
  EXPECT_EQ(request.HandleAs("fanSpeed"), SNMP_ERR_BADVALUE);
  EXPECT_EQ(request.Status(), SNMP_ERR_BADVALUE);
}

TEST_F(DataNodeHandler, ServesTheFirstRequestOfTheListOnly) {
  BuildFanSpeed();
  Request first(kFanSpeedOid, MODE_GET);
  Request second(kFanSpeedOid, MODE_GET);
  first.Append(second);
  EXPECT_EQ(first.HandleAs("fanSpeed"), SNMP_ERR_NOERROR);
  EXPECT_EQ(first.Varbind().type, ASN_INTEGER);
  EXPECT_EQ(second.Varbind().type, ASN_NULL);

  EXPECT_EQ(first.HandleAs("unknown"), SNMP_ERR_NOSUCHNAME);
  EXPECT_EQ(second.Status(), SNMP_ERR_NOERROR);
  EXPECT_FALSE(second.Processed());
}

TEST_F(DataNodeHandler, IsReachedThroughTheAgentLibrary) {
  BuildFanSpeed();
  Request get(kFanSpeedOid, MODE_GET);
  EXPECT_EQ(get.Serve(LocalAgent::RegistrationAt(kFanSpeedOid)), 0);
  EXPECT_EQ(*get.Varbind().val.integer, 7);

  Request next(TestOid({1}), MODE_GETNEXT);
  EXPECT_EQ(next.Serve(LocalAgent::RegistrationAt(kFanSpeedOid)), 0);
  EXPECT_EQ(next.Name(), kFanSpeedOid);
  EXPECT_EQ(*next.Varbind().val.integer, 7);

  for (const int mode : {MODE_SET_RESERVE1, MODE_SET_RESERVE2, MODE_SET_ACTION,
                         MODE_SET_COMMIT}) {
    Request set(kFanSpeedOid, mode);
    set.SetInteger(9);
    EXPECT_EQ(set.Serve(LocalAgent::RegistrationAt(kFanSpeedOid)), 0);
    EXPECT_EQ(set.Status(), SNMP_ERR_NOERROR);
  }
  EXPECT_EQ(speed_, 9);
}

TEST_F(DataNodeHandler, IsKeptByTheAgentLibraryFromWhatTheModesExclude) {
  Build(kFanSpeedOid, "readOnly",
        NetSNMPIntNodeData(&speed_, eNodeAccessReadOnly));
  Build(kOtherOid, "writeOnly",
        NetSNMPIntNodeData(&speed_, eNodeAccessWriteOnly));
  Request set(kFanSpeedOid, MODE_SET_RESERVE1);
  set.SetInteger(9);
  set.Serve(LocalAgent::RegistrationAt(kFanSpeedOid));
  EXPECT_EQ(set.Status(), SNMP_ERR_NOTWRITABLE);

  Request get(kOtherOid, MODE_GET);
  get.Serve(LocalAgent::RegistrationAt(kOtherOid));
  EXPECT_EQ(get.Varbind().type, ASN_NULL);
}

TEST_F(DataNodeHandler, AnswersForAScalarDestroyedWhileDisconnected) {
  auto* const node = BuildFanSpeed();
  subAgent_.SetConnected(false);
  delete node;
  subAgent_.SetConnected(true);
  auto* const left = LocalAgent::RegistrationAt(kFanSpeedOid);
  Request orphan(kFanSpeedOid, MODE_GET);
  EXPECT_EQ(orphan.Serve(left), SNMP_ERR_NOSUCHNAME);
  EXPECT_EQ(orphan.Status(), SNMP_ERR_NOSUCHNAME);

  BuildFanSpeed();
  Request heir(kFanSpeedOid, MODE_GET);
  EXPECT_EQ(heir.Serve(left), SNMP_ERR_NOERROR);
  EXPECT_EQ(*heir.Varbind().val.integer, 7);
}

struct Thrown {
  void (*callback)(NetSNMPDataNode*);
  const char* line;
};

TEST_F(DataNodeHandler, AnswersGenErrAndLogsWhenACallbackThrows) {
  const Thrown cases[] = {
      {[](NetSNMPDataNode*) { throw std::runtime_error("no such fan"); },
       "Exception in a callback: no such fan"},
      {[](NetSNMPDataNode*) { throw 42; },
       "Exception of an unknown type in a callback."}};
  for (const Thrown& each : cases) {
    BuildFanSpeed(each.callback);
    log_.Lines();
    EXPECT_EQ(SetFanSpeed(9), SNMP_ERR_GENERR);
    EXPECT_EQ(speed_, 9);
    EXPECT_THAT(log_.Lines(), ElementsAre(FanSpeedLine(each.line)));
  }
}

TEST_F(DataNodeHandler, RemembersTheInterruptionOfACallback) {
  BuildFanSpeed([](NetSNMPDataNode*) { throw boost::thread_interrupted(); });
  EXPECT_EQ(SetFanSpeed(9), SNMP_ERR_GENERR);
  EXPECT_THROW(exception_barrier::RaisePendingInterruption(),
               boost::thread_interrupted);
  exception_barrier::RaisePendingInterruption();
}

class ThrowingValue : public NetSNMPIntNodeData {
 public:
  using NetSNMPIntNodeData::NetSNMPIntNodeData;
  NetSNMPNodeData* Clone() const override { return new ThrowingValue(*this); }
  const unsigned char* NodeByteValue() const override {
    throw std::runtime_error("sensor lost");
  }
  void NodeDataLogMessage(const std::string&) const override {
    throw std::runtime_error("disk full");
  }
};

TEST_F(DataNodeHandler, AnswersGenErrWhenAnOverrideOfTheValueThrows) {
  Build(kFanSpeedOid, "fanSpeed", ThrowingValue(&speed_, eNodeAccessReadWrite));
  log_.Lines();
  Request get(kFanSpeedOid, MODE_GET);
  EXPECT_EQ(get.HandleAs("fanSpeed"), SNMP_ERR_GENERR);
  EXPECT_EQ(get.Status(), SNMP_ERR_GENERR);
  EXPECT_EQ(SetFanSpeed(9), SNMP_ERR_GENERR);
  EXPECT_THAT(log_.Lines(),
              ElementsAre(FanSpeedLine("Exception in a callback: sensor lost"),
                          FanSpeedLine("Exception in a callback: disk full")));
}

TEST_F(DataNodeHandler, AnswersGenErrWhenTheLoggerThrowsToo) {
  BuildFanSpeed([](NetSNMPDataNode*) { throw std::runtime_error("first"); });
  NetSNMPNode::NodeMsgLogger_ = [](unsigned int, const std::string&) {
    throw std::runtime_error("second");
  };
  EXPECT_EQ(SetFanSpeed(9), SNMP_ERR_GENERR);
  NetSNMPNode::NodeMsgLogger_ = nullptr;
}

TEST_F(DataNodeHandler, SurvivesACallbackThatDeletesItsNode) {
  BuildFanSpeed([](NetSNMPDataNode* node) { delete node; });
  EXPECT_EQ(SetFanSpeed(9), SNMP_ERR_NOERROR);
  EXPECT_EQ(speed_, 9);
  EXPECT_THAT(*NetSNMPNode::nodeMap_, IsEmpty());
  EXPECT_THAT(
      log_.Lines(),
      ElementsAre(
          FanSpeedLine("Net-SNMP data node registration was successful."),
          FanSpeedLine("Net-SNMP data node unregistration was successful.")));
}

TEST_F(DataNodeHandler, SurvivesACallbackThatDeletesItsNodeAndThrows) {
  BuildFanSpeed([](NetSNMPDataNode* node) {
    delete node;
    throw std::runtime_error("gone");
  });
  EXPECT_EQ(SetFanSpeed(9), SNMP_ERR_GENERR);
}

TEST_F(DataNodeHandler, SurvivesACallbackThatReplacesItsNode) {
  BuildFanSpeed([](NetSNMPDataNode* node) {
    static int replacement = 1;
    Oid oid = TestOid({5, 0});
    new NetSNMPDataNode(oid.data(), Length(oid), node->NodeName(),
                        NetSNMPIntNodeData(&replacement, eNodeAccessReadOnly),
                        nullptr, "");
  });
  EXPECT_EQ(SetFanSpeed(9), SNMP_ERR_NOERROR);
  Request request(TestOid({5, 0}), MODE_GET);
  EXPECT_EQ(request.HandleAs("fanSpeed"), SNMP_ERR_NOERROR);
  EXPECT_EQ(*request.Varbind().val.integer, 1);
}

}  // namespace
