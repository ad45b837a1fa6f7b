// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "objects/ObjectIndex.h"

#include <gtest/gtest.h>
#include <snmpsubagent.h>

#include <stdexcept>
#include <string>

namespace snmp = snmpsubagent;

namespace {

using snmp::Oid;
using snmp::detail::ObjectIndex;

// Objects 1.3.2, 1.3.5 and 1.4 in an index of their own; those of `other` are
// another module's.
struct AnObjectIndex : testing::Test {
  AnObjectIndex() {
    for (auto* scalar : {&five, &two, &four}) {
      scalar->State()->Withdraw();
      index.Add(*scalar->State());
    }
  }
  ~AnObjectIndex() override {
    for (auto* scalar : {&five, &two, &four}) index.Remove(*scalar->State());
  }

  // The object's name, or nothing.
  static std::string Text(const snmp::detail::ManagedObject* object) {
    return object ? snmp::ToString(object->Name()) : "";
  }

  snmp::Agent agent{"index"};
  snmp::Module module{agent, "1.3"};
  snmp::Module other{agent, "1.4"};
  snmp::Scalar<int> two{module, "2", 2};
  snmp::Scalar<int> five{module, "5", 5};
  snmp::Scalar<int> four{other, ".1.4.1", 4};
  ObjectIndex index;
};

TEST_F(AnObjectIndex, FindsTheObjectThatANameIsWithin) {
  EXPECT_EQ(Text(index.Containing(Oid("1.3.2"))), "1.3.2");
  EXPECT_EQ(Text(index.Containing(Oid("1.3.2.0.7"))), "1.3.2");
  EXPECT_EQ(Text(index.Containing(Oid("1.3.5.0"))), "1.3.5");
  EXPECT_EQ(Text(index.Containing(Oid("1.3.3"))), "");
  EXPECT_EQ(Text(index.Containing(Oid("1.3"))), "");
  EXPECT_EQ(Text(index.Containing(Oid())), "");
  EXPECT_EQ(Text(index.Containing(Oid("1.5"))), "");
}

TEST_F(AnObjectIndex, FindsTheNextIfThereIsNone) {
  EXPECT_EQ(Text(index.ContainingOrBehind(Oid("1.3.2.9"))), "1.3.2");
  EXPECT_EQ(Text(index.ContainingOrBehind(Oid())), "1.3.2");
  EXPECT_EQ(Text(index.ContainingOrBehind(Oid("1.3.3"))), "1.3.5");
  EXPECT_EQ(Text(index.ContainingOrBehind(Oid("1.3.6"))), "1.4.1");
  EXPECT_EQ(Text(index.ContainingOrBehind(Oid("1.5"))), "");
}

TEST_F(AnObjectIndex, FindsTheObjectBehindAnother) {
  EXPECT_EQ(Text(index.Behind(Oid("1.3.2"))), "1.3.5");
  EXPECT_EQ(Text(index.Behind(Oid("1.3.5"))), "1.4.1");
  EXPECT_EQ(Text(index.Behind(Oid("1.4.1"))), "");
}

TEST_F(AnObjectIndex, HasNoObjectWithinAnother) {
  snmp::Module wide(agent, "1");
  snmp::Scalar above(wide, ".1.3.2.7", 1);
  above.State()->Withdraw();
  EXPECT_THROW(index.Add(*above.State()), std::invalid_argument);
  index.Remove(*two.State());
  index.Add(*above.State());
  EXPECT_TRUE(above.State()->IsServed());
  EXPECT_THROW(index.Add(*two.State()), std::invalid_argument);
  EXPECT_FALSE(two.State()->IsServed());
  index.Remove(*above.State());
}

TEST_F(AnObjectIndex, ForgetsAWholeModule) {
  index.RemoveAllOf(*module.State());
  EXPECT_FALSE(two.State()->IsServed());
  EXPECT_FALSE(five.State()->IsServed());
  EXPECT_TRUE(four.State()->IsServed());
  EXPECT_EQ(Text(index.ContainingOrBehind(Oid())), "1.4.1");
}

TEST_F(AnObjectIndex, DoesNotRemoveWhatIsNotThere) {
  index.Remove(*two.State());
  index.Remove(*two.State());
  EXPECT_EQ(Text(index.ContainingOrBehind(Oid())), "1.3.5");
}

}  // namespace
