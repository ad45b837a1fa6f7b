// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// What the test functions of Erlang's SNMP agent ask a subagent for: their
// modules OLD-SNMPEA-MIB (in part), Test1, Test2, Klas1 to Klas4 and SA-MIB,
// with what their instrumentation functions do. The tests prescribe the OIDs.
//
//   objects ADDRESS
#include <snmpsubagent.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

namespace snmp = snmpsubagent;

namespace {

using snmp::ReadCreate;
using snmp::ReadWrite;
using snmp::SetError;

std::string Broken() { throw std::runtime_error("broken on purpose"); }
int BrokenNumber() { throw std::runtime_error("broken on purpose"); }

struct Named {
  std::string name;
};

// friendsTable and kompissTable, of which the first has its index as column 1.
struct Friends {
  Friends(snmp::Module& module, const char* number, unsigned name,
          const std::string& initial)
      : table(module, number) {
    auto access = ReadCreate().Size(0, 255);
    if (initial.empty()) access.Required();
    table.Column(name, &Named::name, access).RowStatus(name + 1);
  }
  snmp::Table<int, Named> table;
};

struct Klas1 {
  explicit Klas1(snmp::Agent& agent) : module(agent, "1.3.6.1.2.1.7") {}
  snmp::Module module;
  snmp::Scalar<std::string> name{module, "1", "", ReadWrite().Size(0, 255)};
  Friends friends{module, "4", 2, ""};
  Friends others{module, "5", 1, ""};
};

struct OtherNamed {
  std::string name = "JJJ";
};

struct Klas2 {
  explicit Klas2(snmp::Agent& agent) : module(agent, "1.3.6.1.2.1.9") {
    others.Column(1, &OtherNamed::name, ReadCreate().Size(0, 255)).RowStatus(2);
  }
  snmp::Module module;
  snmp::Scalar<std::string> name{module, "1", "", ReadWrite().Size(0, 255)};
  snmp::Scalar<int> number{module, "2", 0, ReadWrite()};
  Friends friends{module, "4", 2, ""};
  snmp::Table<int, OtherNamed> others{module, "5"};
};

struct Numbered {
  int number = 0;
};

// klas3.erl refuses by the value or the index.
struct Klas34 {
  explicit Klas34(snmp::Agent& agent) : module(agent, "1.3.6.1.2.1.8") {
    name.Check([](const std::string& after) {
      if (after == "hoj") return SetError::InconsistentValue;
      return after == "xfail" ? SetError::GenErr : SetError::None;
    });
    // Its status is that of no row: it may be set again and again.
    first.Column(2, &Numbered::number, ReadWrite())
        .Check([](const snmp::RowChange<int, Numbered>& change) {
          return change.key != 2;
        })
        .Apply([](const snmp::RowChange<int, Numbered>& change) {
          return change.key == 4 ? SetError::CommitFailed : SetError::None;
        });
    for (int key = 1; key < 5; ++key) first.Insert(key, {});
    // The suite's bad return values are of one column or the other.
    second.Column(2, [](int key, const Numbered&) {
      return key % 2 == 0 ? BrokenNumber() : key;
    });
    second.Column(3, [](int key, const Numbered&) {
      return key % 2 == 1 ? BrokenNumber() : key;
    });
    for (int key = 4; key < 11; ++key) second.Insert(key, {});
    third.Index(1, ReadWrite())
        .Column(2, &Numbered::number, ReadCreate())
        .RowStatus(3);
  }
  snmp::Module module;
  snmp::Scalar<std::string> name{module, "1", "ok", ReadWrite().Size(0, 255)};
  snmp::Table<int, Numbered> first{module, "4"};
  snmp::Table<int, Numbered> second{module, "5"};
  snmp::Table<int, Numbered> third{module, "6"};
};

enum class Bit { B0 };
constexpr Bit B(int place) { return static_cast<Bit>(place); }
using BitSet = snmp::Bits<Bit>;

auto Told(const BitSet& bits) {
  return snmp::GetSet([bits] { return bits; }, [](const BitSet&) {});
}

struct Counted {
  snmp::Counter64 count;
};

struct Test1 {
  explicit Test1(snmp::Agent& agent) : module(agent, "1.3.6.1.2.1.15") {
    implied.Column(2, &Named::name, ReadCreate().Required()).RowStatus(3);
    second.Column(3, &Named::name, ReadCreate().Required()).RowStatus(4);
    sparse.Column(4, &Named::name, ReadCreate().Required()).RowStatus(6);
    counted.Column(5, &Counted::count)
        .RowStatus(7)
        .Column(8, std::string("descr"));
  }
  static BitSet Bad() { throw std::runtime_error("broken on purpose"); }

  snmp::Module module;
  snmp::Scalar<BitSet> bits1{module, "1", Told({B(0), B(2)}),
                             ReadWrite().NamedBits(B(0), B(1), B(2))};
  snmp::Scalar<BitSet> bits2{
      module, "2", Told({B(1), B(2), B(9), B(10)}),
      ReadWrite().NamedBits(B(0), B(1), B(2), B(3), B(4), B(5), B(6), B(7),
                            B(8), B(9), B(10), B(11), B(12), B(13), B(14),
                            B(15))};
  snmp::Scalar<BitSet> bits3{module, "3", Bad};
  snmp::Scalar<BitSet> bits4{module, "4", Bad};
  snmp::Table<snmp::Implied<std::string>, Named> implied{module, "5"};
  snmp::Table<std::tuple<int, snmp::Implied<std::string>>, Named> second{module,
                                                                         "6"};
  snmp::Table<int, Named> sparse{module, "7"};
  snmp::Scalar<std::string> sparseStr{module, "8", "slut", ReadWrite()};
  snmp::Table<int, Counted> counted{module, "9"};
  snmp::Scalar<std::string> cntStr{module, "10", "slut", ReadWrite()};
  snmp::Scalar<snmp::Counter64> cnt64{
      module, "11", snmp::Counter64{std::numeric_limits<std::uint64_t>::max()}};
  snmp::Scalar<std::string> cnt64Str{module, "12", "after cnt64"};
  snmp::Scalar<snmp::Opaque> opaque{module, "13", snmp::Opaque{"opaque-data"}};
  snmp::Scalar<std::string> multiStr{module, "14", "no", ReadWrite()};
};

struct Test2 {
  explicit Test2(snmp::Agent& agent)
      : module(agent, "1.3.6.1.2.1.16"),
        outside(agent, "1.3.6.1.2.1.17"),
        numbers(agent, "1.3.6.1.6.3.99") {
    tDescr2.Check([](const std::string& after) {
      static const std::map<std::string, SetError> kErrors{
          {"badValue", SetError::WrongValue},
          {"inconsistentValue", SetError::InconsistentValue},
          {"resourceUnavailable", SetError::ResourceUnavailable},
          {"inconsistentName", SetError::InconsistentName},
          {"is_set_ok_fail", SetError::GenErr}};
      const auto error = kErrors.find(after);
      return error == kErrors.end() ? SetError::None : error->second;
    });
    tTable.Column(2, &Named::name, ReadCreate()).Column(3, snmp::Counter32{0});
    tTable2.Column(2, snmp::Counter32{100});
    tTable2.Insert(2, {});
  }

  snmp::Module module;
  snmp::Module outside;
  snmp::Module numbers;
  snmp::Scalar<std::string> xDescr{outside, "1", "", ReadWrite()};
  snmp::Scalar<std::string> xDescr2{outside, "2", "", ReadWrite()};
  snmp::Scalar<std::string> tDescr{module, "1", "", ReadWrite()};
  snmp::Scalar<std::string> tDescr2{module, "2", "", ReadWrite()};
  snmp::Scalar<std::string> tDescr3{
      module, "3", [] { return std::optional<std::string>(); }};
  snmp::Table<std::string, Named> tTable{module, "5"};
  snmp::Scalar<std::string> tTooBig{module, "6.1", std::string(1300, 'a'),
                                    ReadWrite()};
  snmp::Scalar<std::string> tGenErr1{module, "6.2", Broken};
  snmp::Scalar<int> tGenErr2{module, "6.3", BrokenNumber};
  snmp::Scalar<int> tGenErr3{module, "6.4", BrokenNumber};
  snmp::Scalar<std::string> tStr{module, "7", "a", ReadWrite().Size(1, 4)};
  snmp::Scalar<int> tInt1{module, "8", 1, ReadWrite().Range(1, 4)};
  snmp::Scalar<int> tInt2{module, "9", 1, ReadWrite().Range(1, 2)};
  snmp::Scalar<int> tInt3{module, "10", 1, ReadWrite().Range(1, 4).Range(6, 7)};
  snmp::Table<int, Numbered> tTable2{numbers, ".1.3.6.1.6.3.99"};
};

struct Community {
  int view = 0;
  int access = 1;
};

// The intCommunityTable of OLD-SNMPEA-MIB, with the rows that the suite makes
// in the agent.
struct OldSnmpea {
  explicit OldSnmpea(snmp::Agent& agent)
      : module(agent, "1.3.6.1.4.1.193.19.3.3.2.1.1") {
    communities.Column(3, &Community::view, ReadCreate().Required())
        .Column(4, &Community::access, ReadCreate().Range(1, 2).Required())
        .RowStatus(5);
    communities.Insert({kManager, "public"}, {2, 2});
    communities.Insert({kManager, "standard trap"}, {2, 1});
  }
  const snmp::IpAddress kManager{127, 0, 0, 1};
  snmp::Module module;
  snmp::Table<std::tuple<snmp::IpAddress, std::string>, Community> communities{
      module, "1"};
  snmp::Scalar<snmp::IpAddress> address{module, "2", kManager, ReadWrite()};
};

struct SaMib {
  explicit SaMib(snmp::Agent& agent) : module(agent, "1.3.6.1.4.1.193.2") {
    badValue.Check([](int after) {
      return after == 5 || after == 6 ? SetError::WrongValue : SetError::None;
    });
    genErr.Apply([](int) { return SetError::GenErr; });
  }
  snmp::Module module;
  snmp::Scalar<std::string> test{module, "1", "", ReadWrite().Size(0, 255)};
  snmp::Scalar<int> badValue{module, "2", 3, ReadWrite()};
  snmp::Scalar<int> genErr{module, "3", 4, ReadWrite()};
  snmp::Scalar<std::string> tooBig{module, "4", std::string(500, 'C')};
  snmp::Scalar<int> fel{module, "5", BrokenNumber};
};

}  // namespace

int main(int argc, char* argv[]) {
  if (argc != 2) return 2;
  snmp::AgentOptions options;
  options.master = argv[1];
  options.log = [](snmp::LogLevel, const std::string& line) {
    std::fprintf(stderr, "%s\n", line.c_str());
  };
  snmp::Agent agent("conformance", options);
  Klas1 klas1(agent);
  Klas2 klas2(agent);
  Klas34 klas34(agent);
  Test1 test1(agent);
  Test2 test2(agent);
  OldSnmpea oldSnmpea(agent);
  SaMib saMib(agent);
  agent.Start();
  if (agent.WaitUntilConnected(std::chrono::seconds(10))) {
    // The last one to be registered.
    while (!saMib.module.IsRegistered()) usleep(10000);
    std::puts("it is served");
    std::fflush(stdout);
  }
  pause();
}
