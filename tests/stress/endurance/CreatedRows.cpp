// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "CreatedRows.h"

#include "Expectations.h"
#include "support/Answers.h"

namespace snmp = snmpsubagent;

namespace {

constexpr int kKeys = 12;
constexpr std::size_t kMostRows = 8;  // that managers may make
constexpr int kMostNumber = 100;

enum Column { kNumber = 2, kText = 3, kStatus = 4 };

int Value(snmp::RowStatus status) { return static_cast<int>(status); }

const int kActive = Value(snmp::RowStatus::Active);
const int kNotInService = Value(snmp::RowStatus::NotInService);
const int kNotReady = Value(snmp::RowStatus::NotReady);
const int kCreateAndGo = Value(snmp::RowStatus::CreateAndGo);
const int kCreateAndWait = Value(snmp::RowStatus::CreateAndWait);
const int kDestroy = Value(snmp::RowStatus::Destroy);

}  // namespace

CreatedRows::CreatedRows(snmp::Module& module, Random& random)
    : random_(random), table_(module, "9") {
  table_.Column(kNumber, &Row::number, snmp::ReadCreate().Range(0, kMostNumber))
      .Column(kText, &Row::text, snmp::ReadCreate().Size(1, 60).Required())
      .RowStatus(kStatus)
      .Limit(kMostRows);
}

void CreatedRows::Change() {
  const auto key = random_.Below(kKeys);
  const Row row{random_.Between(0, kMostNumber),
                std::string(1 + random_.Below(60), 'x')};
  const bool isThere = known_.count(key) != 0;
  switch (random_.Below(3)) {
    case 0:
      Require(table_.Insert(key, row) == !isThere, "Insert() went wrong");
      if (!isThere) known_[key] = {kActive, row.number, row.text};
      break;
    case 1:
      Require(table_.Erase(key) == isThere, "Erase() went wrong");
      known_.erase(key);
      break;
    default:
      Require(
          table_.Change(key, [&](Row& r) { r.number = row.number; }) == isThere,
          "Change() went wrong");
      if (isThere) known_[key].number = row.number;
  }
}

void CreatedRows::Set(const testkit::Manager& manager, Work& done) {
  const Request request = RandomRequest();
  const auto found = known_.find(request.key);
  std::optional<Known> row;
  if (found != known_.end()) row = found->second;
  const bool wasThere = row.has_value();
  const std::string error = Foresee(request, row);
  const std::string answer = support::SetAt(manager, Words(request));
  Require(answer.substr(0, answer.find(' ')) == error,
          "a SET of row " + std::to_string(request.key) + " got " + answer +
              ", expected: " + error);
  if (error != "None") {
    ++done.refused;
    return;
  }
  ++done.sets;
  if (!wasThere && row) ++done.created;
  if (wasThere && !row) ++done.destroyed;
  if (row) {
    known_[request.key] = *row;
  } else {
    known_.erase(request.key);
  }
}

CreatedRows::Request CreatedRows::RandomRequest() const {
  Request request{random_.Below(kKeys), {}, {}, {}};
  if (!random_.OneIn(4)) {
    request.status = random_.OneOf({kActive, kNotInService, kNotReady,
                                    kCreateAndGo, kCreateAndWait, kDestroy});
  }
  if (request.status == kDestroy) return request;
  if (random_.OneIn(2)) {
    request.text = "text " + std::to_string(random_.Below(1000));
  }
  if (random_.OneIn(2) || (!request.status && !request.text)) {
    request.number = random_.Between(0, kMostNumber + 20);
  }
  return request;
}

std::vector<std::string> CreatedRows::Words(const Request& request) const {
  std::vector<std::string> words;
  const auto add = [&](int column, const char* type, const std::string& value) {
    words.insert(words.end(), {Cell(column, request.key), type, value});
  };
  if (request.number) add(kNumber, "i", std::to_string(*request.number));
  if (request.text) add(kText, "s", *request.text);
  if (request.status) add(kStatus, "i", std::to_string(*request.status));
  return words;
}

std::string CreatedRows::Foresee(const Request& request,
                                 std::optional<Known>& row) const {
  if (request.number.value_or(0) > kMostNumber) return "wrongValue";
  const std::string error = ForeseeStatus(request, row);
  if (error != "None" || !row) return error;
  if (request.number) row->number = *request.number;
  if (request.text) row->text = request.text;
  if (row->status == kNotReady && row->text) row->status = kNotInService;
  return "None";
}

std::string CreatedRows::ForeseeStatus(const Request& request,
                                       std::optional<Known>& row) const {
  if (!request.status) return row ? "None" : "inconsistentName";
  const int status = *request.status;
  if (status == kNotReady) return "wrongValue";
  const bool creates = status == kCreateAndGo || status == kCreateAndWait;
  const bool lacksText = !request.text && !(row && row->text);
  if (status == kDestroy) {
    row.reset();
    return "None";
  }
  if (creates == row.has_value()) return "inconsistentValue";
  if (status != kCreateAndWait && lacksText) return "inconsistentValue";
  if (creates && known_.size() >= kMostRows) return "resourceUnavailable";
  if (creates) row.emplace();
  row->status = status == kCreateAndWait ? kNotReady
                : creates                ? kActive
                                         : status;
  return "None";
}

std::string CreatedRows::Oid() const { return ".1.3.6.1.4.1.32473.97.9"; }

std::string CreatedRows::Cell(int column, unsigned key) const {
  return Oid() + ".1." + std::to_string(column) + "." + std::to_string(key);
}

std::vector<std::string> CreatedRows::Cells() const {
  std::vector<std::string> numbers;
  std::vector<std::string> texts;
  std::vector<std::string> states;
  for (const auto& [key, row] : known_) {
    numbers.push_back(Cell(kNumber, key) +
                      " = INTEGER: " + std::to_string(row.number));
    if (row.text) {
      texts.push_back(Cell(kText, key) + " = STRING: \"" + *row.text + "\"");
    }
    states.push_back(Cell(kStatus, key) +
                     " = INTEGER: " + std::to_string(row.status));
  }
  numbers.insert(numbers.end(), texts.begin(), texts.end());
  numbers.insert(numbers.end(), states.begin(), states.end());
  return numbers;
}
