// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Where the value of a scalar comes from.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <optional>
#include <stdexcept>
#include <string>

#include "Device.h"

namespace snmp = snmpsubagent;

namespace {

using namespace std::chrono_literals;

class AScalar : public testing::Test {
 protected:
  Device device;
  snmp::Module module{device.agent, kBase};
};

TEST_F(AScalar, TellsTheVariableAsItIsNow) {
  int celsius = 21;
  const snmp::Scalar scalar(module, "1", celsius);
  device.Connect();
  EXPECT_EQ(device.Get("1.0"), "INTEGER 21");
  {
    const auto lock = device.agent.Lock();
    celsius = -40;
  }
  EXPECT_EQ(device.Get("1.0"), "INTEGER -40");
  EXPECT_EQ(scalar.Get(), -40);
}

TEST_F(AScalar, WritesTheVariable) {
  int celsius = 21;
  snmp::Scalar scalar(module, "1", celsius, snmp::ReadWrite());
  device.Connect();
  EXPECT_EQ(device.Set({{"1.0", Int(22)}}), "noError");
  EXPECT_EQ(celsius, 22);
  scalar.Set(23);
  EXPECT_EQ(celsius, 23);
}

TEST_F(AScalar, TellsAndWritesAnAtomic) {
  std::atomic<unsigned> speed{7};
  const snmp::Scalar scalar(module, "1", speed, snmp::ReadWrite());
  device.Connect();
  EXPECT_EQ(device.Get("1.0"), "Gauge32 7");
  speed = 8;
  EXPECT_EQ(device.Get("1.0"), "Gauge32 8");
  EXPECT_EQ(device.Set({{"1.0", Gauge(9)}}), "noError");
  EXPECT_EQ(speed, 9U);
}

TEST_F(AScalar, HoldsACopy) {
  std::string name = "left";
  snmp::Scalar scalar(module, "1", std::move(name), snmp::ReadWrite());
  device.Connect();
  EXPECT_EQ(device.Get("1.0"), "OCTET STRING \"left\"");
  EXPECT_EQ(device.Set({{"1.0", Octets("right")}}), "noError");
  EXPECT_EQ(scalar.Get(), "right");
  scalar.Set("middle");
  EXPECT_EQ(device.Get("1.0"), "OCTET STRING \"middle\"");
}

TEST_F(AScalar, TellsAnotherValueFromNowOn) {
  int celsius = 22;
  snmp::Scalar scalar(module, "1", 21);
  device.Connect();
  EXPECT_EQ(device.Get("1.0"), "INTEGER 21");
  scalar.From([] { return -40; });
  EXPECT_EQ(device.Get("1.0"), "INTEGER -40");
  scalar.From(celsius);
  EXPECT_EQ(device.Get("1.0"), "INTEGER 22");
  scalar.Set(23);
  EXPECT_EQ(celsius, 23);
}

TEST_F(AScalar, IsWrittenWhereItsValueIsNow) {
  int celsius = 22;
  snmp::Scalar scalar(module, "1", 21, snmp::ReadWrite().Range(0, 90));
  scalar.From(celsius);
  device.Connect();
  EXPECT_EQ(device.Set({{"1.0", Int(91)}}), "wrongValue 1");
  EXPECT_EQ(device.Set({{"1.0", Int(90)}}), "noError");
  EXPECT_EQ(celsius, 90);
  EXPECT_THROW(scalar.From([] { return 1; }), std::logic_error);
  EXPECT_EQ(device.Get("1.0"), "INTEGER 90");
}

TEST_F(AScalar, MayChangeItsSourceFromWithin) {
  snmp::Scalar<int> scalar(module, "1", 0);
  scalar.From([&, text = std::string("a text that is on the heap")] {
    scalar.From(5);
    return static_cast<int>(text.size());
  });
  device.Connect();
  EXPECT_EQ(device.Get("1.0"), "INTEGER 26");
  EXPECT_EQ(device.Get("1.0"), "INTEGER 5");
}

TEST_F(AScalar, HoldsALiteralAsText) {
  const snmp::Scalar scalar(module, "1", "text");
  static_assert(
      std::is_same_v<decltype(scalar), const snmp::Scalar<std::string>>);
  device.Connect();
  EXPECT_EQ(device.Get("1.0"), "OCTET STRING \"text\"");
}

TEST_F(AScalar, AsksItsFunctionForEachRequest) {
  int asked = 0;
  snmp::Scalar scalar(module, "1", [&] { return ++asked; });
  device.Connect();
  EXPECT_EQ(device.Get("1.0"), "INTEGER 1");
  EXPECT_EQ(device.GetNext("1"), "1.0 INTEGER 2");
  EXPECT_EQ(scalar.Get(), 3);
  EXPECT_THROW(scalar.Set(4), std::logic_error);
}

int Answer() { return 42; }

TEST_F(AScalar, AsksAFunctionByItsName) {
  const snmp::Scalar scalar(module, "1", Answer);
  device.Connect();
  EXPECT_EQ(device.Get("1.0"), "INTEGER 42");
}

TEST_F(AScalar, HasNoInstanceWhenItsFunctionSaysSo) {
  std::optional<int> value;
  const snmp::Scalar scalar(module, "1", [&] { return value; });
  const snmp::Scalar behind(module, "2", 5);
  device.Connect();
  EXPECT_EQ(device.Get("1.0"), "noSuchInstance");
  EXPECT_EQ(device.GetNext("1"), "2.0 INTEGER 5");
  EXPECT_THROW((void)scalar.Get(), std::logic_error);
  {
    const auto lock = device.agent.Lock();
    value = 4;
  }
  EXPECT_EQ(device.Get("1.0"), "INTEGER 4");
  EXPECT_EQ(device.GetNext("1"), "1.0 INTEGER 4");
}

TEST_F(AScalar, KeepsWhatItsFunctionSaysForATime) {
  int asked = 0;
  snmp::Scalar slow(module, "1", snmp::Cached([&] { return ++asked; }, 1h));
  int askedAlways = 0;
  snmp::Scalar fast(module, "2",
                    snmp::Cached([&] { return ++askedAlways; }, 0s));
  device.Connect();
  EXPECT_EQ(device.GetAll({"1.0", "2.0"}), "INTEGER 1, INTEGER 1");
  EXPECT_EQ(device.GetAll({"1.0", "2.0"}), "INTEGER 1, INTEGER 2");
}

TEST_F(AScalar, AsksAgainWhenTheTimeIsOver) {
  int asked = 0;
  snmp::Scalar scalar(module, "1", snmp::Cached([&] { return ++asked; }, 20ms));
  EXPECT_EQ(scalar.Get(), 1);
  EXPECT_TRUE(Eventually([&] { return scalar.Get() == 2; }));
}

TEST_F(AScalar, KeepsThatThereIsNoInstance) {
  int asked = 0;
  const snmp::Scalar scalar(module, "1",
                            snmp::Cached(
                                [&]() -> std::optional<int> {
                                  ++asked;
                                  return std::nullopt;
                                },
                                1h));
  device.Connect();
  EXPECT_EQ(device.GetAll({"1.0", "1.0"}), "noSuchInstance, noSuchInstance");
  EXPECT_EQ(asked, 1);
}

TEST_F(AScalar, ReadsAndWritesWithTwoFunctions) {
  int stored = 5;
  snmp::Scalar scalar(
      module, "1",
      snmp::GetSet([&] { return stored; }, [&](int value) { stored = value; }),
      snmp::ReadWrite());
  device.Connect();
  EXPECT_EQ(device.Get("1.0"), "INTEGER 5");
  EXPECT_EQ(device.Set({{"1.0", Int(6)}}), "noError");
  EXPECT_EQ(stored, 6);
  scalar.Set(7);
  EXPECT_EQ(stored, 7);
}

TEST_F(AScalar, CountsWithAnIntegerOfTheApplications) {
  std::uint64_t octets = 18446744073709551615U;
  std::atomic<std::uint64_t> atomicOctets{1};
  std::uint32_t errors = 4294967295U;
  std::atomic<std::uint32_t> since{100};
  const snmp::Scalar a(module, "1", snmp::As<snmp::Counter64>(octets));
  const snmp::Scalar b(module, "2", snmp::As<snmp::Counter64>(atomicOctets));
  const snmp::Scalar c(module, "3", snmp::As<snmp::Counter32>(errors));
  const snmp::Scalar d(module, "4", snmp::As<snmp::TimeTicks>(since));
  device.Connect();
  EXPECT_EQ(device.GetAll({"1.0", "2.0", "3.0", "4.0"}),
            "Counter64 18446744073709551615, Counter64 1, "
            "Counter32 4294967295, TimeTicks 100");
  ++atomicOctets;
  EXPECT_EQ(device.Get("2.0"), "Counter64 2");
}

struct Celsius {
  int degrees = 0;
  friend bool operator==(Celsius a, Celsius b) {
    return a.degrees == b.degrees;
  }
};

}  // namespace

template <>
struct snmpsubagent::Syntax<Celsius> {
  static constexpr ValueType kType = ValueType::Integer;
  static void Write(ValueWriter& writer, Celsius value) {
    writer.Integer(value.degrees);
  }
  static SetError Read(const ValueView& view, Celsius& value) {
    const auto degrees = static_cast<std::int64_t>(view.number);
    if (degrees < -273) return SetError::WrongValue;
    value.degrees = static_cast<int>(degrees);
    return SetError::None;
  }
};

namespace {

TEST_F(AScalar, HasATypeOfTheApplications) {
  Celsius celsius{20};
  const snmp::Scalar scalar(module, "1", celsius, snmp::ReadWrite());
  device.Connect();
  EXPECT_EQ(device.Get("1.0"), "INTEGER 20");
  EXPECT_EQ(device.Set({{"1.0", Int(-274)}}), "wrongValue 1");
  EXPECT_EQ(device.Set({{"1.0", Int(-273)}}), "noError");
  EXPECT_EQ(celsius.degrees, -273);
}

TEST_F(AScalar, AnswersGenErrAndLogsWhatItsFunctionThrows) {
  const snmp::Scalar good(module, "1", 1);
  const snmp::Scalar bad(module, "2", []() -> int {
    throw std::runtime_error("the sensor is gone");
  });
  const snmp::Scalar odd(module, "3", []() -> int { throw 5; });
  device.Connect();
  EXPECT_EQ(device.GetAll({"1.0", "2.0"}), "genErr 2");
  EXPECT_EQ(device.GetNext("1.0"), "genErr 1");
  EXPECT_EQ(device.Get("3.0"), "genErr 1");
  EXPECT_EQ(device.Get("1.0"), "INTEGER 1");
  EXPECT_TRUE(device.HasLogged(
      "1.3.6.1.4.1.32473.7.2: a function of the application has thrown: "
      "the sensor is gone"));
  EXPECT_TRUE(device.HasLogged("32473.7.3: a function of the application"));
}

TEST_F(AScalar, MovesToAnotherVariableOfTheProgram) {
  snmp::Scalar first(module, "1", 1);
  snmp::Scalar second(module, "2", 2);
  device.Connect();
  first = std::move(second);
  EXPECT_EQ(device.GetAll({"1.0", "2.0"}), "noSuchObject, INTEGER 2");
  const snmp::Scalar third(std::move(first));
  EXPECT_EQ(device.Get("2.0"), "INTEGER 2");
}

TEST_F(AScalar, IsServedWhereverItIsBuiltAndDestroyed) {
  device.Connect();
  EXPECT_EQ(device.Get("1.0"), "noSuchObject");
  {
    const snmp::Scalar scalar(module, "1", 1);
    EXPECT_EQ(device.Get("1.0"), "INTEGER 1");
  }
  EXPECT_EQ(device.Get("1.0"), "noSuchObject");
}

TEST_F(AScalar, RefusesAPlaceThatIsTakenOrElsewhere) {
  const snmp::Scalar scalar(module, "1.2", 1);
  const auto build = [&](const char* oid) {
    snmp::Scalar other(module, oid, 2);
  };
  EXPECT_THROW(build("1.2"), std::invalid_argument);
  EXPECT_THROW(build("1"), std::invalid_argument);
  EXPECT_THROW(build("1.2.1"), std::invalid_argument);
  EXPECT_THROW(build(""), std::invalid_argument);
  EXPECT_THROW(build("1..2"), std::invalid_argument);
  EXPECT_THROW(build("x"), std::invalid_argument);
  EXPECT_THROW(build(".1.3.6.1.4.1.32473.8.1"), std::invalid_argument);
  EXPECT_NO_THROW(build("1.1"));
  EXPECT_NO_THROW(build(".1.3.6.1.4.1.32473.7.1.3"));
  device.Connect();
  EXPECT_EQ(device.Walk("0"), "1.2.0 INTEGER 1");
}

TEST_F(AScalar, RefusesConstraintsThatDoNotFitItsType) {
  enum class Bit { A };
  const auto with = [&](auto value, const auto& access) {
    snmp::Scalar scalar(module, "1", value, access);
  };
  EXPECT_THROW(with(1, snmp::ReadWrite().Size(1)), std::invalid_argument);
  EXPECT_THROW(with(1, snmp::ReadWrite().NamedBits(Bit::A)),
               std::invalid_argument);
  EXPECT_THROW(with(std::string(), snmp::ReadWrite().Range(0, 1)),
               std::invalid_argument);
  EXPECT_THROW(with(snmp::Oid(), snmp::ReadWrite().Size(1)),
               std::invalid_argument);
  EXPECT_THROW(with(snmp::IpAddress(), snmp::ReadWrite().Range(0, 1)),
               std::invalid_argument);
  EXPECT_THROW((void)snmp::ReadWrite().Range(2, 1), std::invalid_argument);
  EXPECT_THROW((void)snmp::ReadWrite().Size(2, 1), std::invalid_argument);
}

TEST_F(AScalar, IsNotServedWhenItsModuleIsGone) {
  auto other =
      std::make_unique<snmp::Module>(device.agent, "1.3.6.1.4.1.32473.8");
  snmp::Scalar scalar(*other, "1", 5, snmp::ReadWrite());
  device.Connect(2);
  EXPECT_EQ(device.Get(".1.3.6.1.4.1.32473.8.1.0"), "INTEGER 5");
  other.reset();
  device.Master().ServeUntil(
      [&] { return device.Master().Registered().size() == 1; });
  EXPECT_EQ(device.Get(".1.3.6.1.4.1.32473.8.1.0"), "noSuchObject");
  scalar.Set(6);
  EXPECT_EQ(scalar.Get(), 6);
}

}  // namespace
