// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_TYPEDVALUETEST_H_
#define SNMPSUBAGENT_TESTS_TYPEDVALUETEST_H_

#include <memory>
#include <vector>

#include "support/Kinds.h"
#include "support/OwnerTest.h"

// Values of a kind over a variable of the application, and with local data.
template <typename K>
class TypedValueTest : public OwnerTest {
 protected:
  using Class = typename K::Class;
  using Variable = typename K::Variable;

  // Over the application's variable.
  std::unique_ptr<Class> Over(NetSNMPDataNode* owner = nullptr) {
    return MakeValue<K>(&variable_, eNodeAccessReadWrite, false, owner);
  }

  // With a copy of the variable as local data.
  std::unique_ptr<Class> Local() {
    return MakeValue<K>(&variable_, eNodeAccessReadWrite, true);
  }

  static std::unique_ptr<Class> WithoutStorage() {
    return MakeValue<K>(nullptr, eNodeAccessReadWrite);
  }

  // Both forms of storage.
  std::vector<std::unique_ptr<Class>> OverAndLocal() {
    std::vector<std::unique_ptr<Class>> values;
    values.push_back(Over());
    values.push_back(Local());
    return values;
  }

  static void Set(Class& value, const Variable& state, bool notify = false) {
    value.NodeDataValue(ArgumentOf<K>(state), notify);
  }

  void* Storage() { return StorageIn(variable_); }

  Variable variable_ = K::kOne;
};

#endif  // SNMPSUBAGENT_TESTS_TYPEDVALUETEST_H_
