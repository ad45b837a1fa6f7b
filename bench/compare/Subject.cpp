// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "compare/Subject.h"

#include <fcntl.h>
#include <time.h>

#include <fstream>
#include <iterator>
#include <limits>
#include <stdexcept>

#include "compare/Workload.h"
#include "objects/objects.h"
#include "testkit/FileDescriptor.h"

namespace agentx = testkit::agentx;

namespace {

const char* ProgramOf(Base base) {
  switch (base) {
    case Base::kNodeClasses:
      return BENCH_SUBAGENT;
    case Base::kObjects:
      return BENCH_SERVICE;
    case Base::kSystemAlone:
      return BENCH_LOOP;
    default:
      return BENCH_PEER;
  }
}

std::vector<std::string> Command(const Publisher& publisher,
                                 const std::string& master, unsigned int count,
                                 std::vector<std::string> command) {
  command.insert(command.end(), {ProgramOf(publisher.base), publisher.kind,
                                 master, std::to_string(count)});
  return command;
}

// Of a table only one subtree is registered, and so of all objects of a module
// and of the bare loop.
std::size_t SubtreesOf(const Publisher& publisher, unsigned int count) {
  const std::string& kind = publisher.kind;
  if (publisher.base == Base::kObjects ||
      publisher.base == Base::kSystemAlone) {
    return 1;
  }
  if (kind == "scalars") return count;
  return kind == "traps" ? 2 : 1;
}

// The object that is registered last.
agentx::Oid LastObjectOf(const std::string& kind, unsigned int count) {
  if (kind == "scalars") return ScalarOid(count);
  return kind == "traps" ? NotifiedOid() : CellOid(BENCH_FIRST_COLUMN, 1);
}

}  // namespace

std::string Publisher::Name() const {
  switch (base) {
    case Base::kNodeClasses:
      return "library";
    case Base::kObjects:
      return "objects";
    case Base::kSystemAlone:
      return "bare loop";
    default:
      return "C " + kind;
  }
}

Subject::Subject(const Publisher& publisher, unsigned int count,
                 std::unique_ptr<Master> master,
                 const std::vector<std::string>& tool)
    : name_(publisher.Name()), master_(std::move(master)) {
  // A ping would be an uncounted request.
  directory_.Write("bench.conf", "agentXPingInterval 3600\n");
  const testkit::FileDescriptor output(
      open(Log().c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600));
  process_ = std::make_unique<testkit::ChildProcess>(
      Command(publisher, master_->Address(), count, tool),
      std::map<std::string, std::string>{
          {"MIBS", ""},
          {"SNMPCONFPATH", directory_.Path()},
          {"SNMP_PERSISTENT_DIR", directory_.Path()}},
      testkit::ChildProcess::Streams{output.Number(), output.Number()});
  try {
    master_->Connect({SubtreesOf(publisher, count),
                      LastObjectOf(publisher.kind, count),
                      publisher.base != Base::kObjects});
  } catch (const std::exception& failure) {
    std::ifstream lines(Log());
    throw std::runtime_error(
        name_ + ": " + failure.what() + "\n" +
        std::string(std::istreambuf_iterator<char>(lines), {}));
  }
}

Subject::CpuTime Subject::Used() const {
  clockid_t clock;
  timespec used;
  if (clock_getcpuclockid(process_->Id(), &clock) != 0 ||
      clock_gettime(clock, &used) != 0) {
    throw std::runtime_error(name_ + " has ended");
  }
  return std::chrono::seconds(used.tv_sec) +
         std::chrono::nanoseconds(used.tv_nsec);
}

Subject::CpuTime Subject::UsedForLoading() const {
  std::ifstream log(Log());
  double microseconds = 0;
  log >> microseconds;
  return CpuTime(microseconds);
}

double Subject::Memory(const std::string& sum) const {
  std::ifstream rollup("/proc/" + std::to_string(process_->Id()) +
                       "/smaps_rollup");
  for (std::string word; rollup >> word;) {
    double kilobytes = 0;
    if (word == sum && rollup >> kilobytes) return 1024 * kilobytes;
    rollup.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
  }
  throw std::runtime_error(name_ + ": its memory cannot be read");
}
