// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "check/ReadCheck.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace snmpsubagent::check {
namespace {

// Their values fit into a message, mostly; if not, fewer are asked for.
constexpr std::size_t kNamesPerRequest = 25;

// A name to ask with, and the number of the instance that has to come.
struct Question {
  Oid name;
  std::size_t instance;
};

using Ask = Response (Manager::*)(const std::vector<Oid>&);
using Judge = std::function<void(const Question&, const Varbind&)>;

class Asking {
 public:
  Asking(Manager& manager, Served& served, Report& report, Ask ask, Judge judge)
      : manager_(manager),
        served_(served),
        report_(report),
        ask_(ask),
        judge_(std::move(judge)) {}

  void All(const std::vector<Question>& questions) {
    for (std::size_t i = 0; i < questions.size(); i += kNamesPerRequest) {
      const std::size_t end = std::min(i + kNamesPerRequest, questions.size());
      Some(&questions[i], &questions[0] + end);
    }
  }

 private:
  void Some(const Question* begin, const Question* end) {
    std::vector<Oid> names;
    for (auto at = begin; at != end; ++at) names.push_back(at->name);
    const Response response = (manager_.*ask_)(names);
    const std::size_t number = names.size();
    if (response.Succeeded() && response.varbinds.size() == number) {
      for (std::size_t i = 0; i < number; ++i) {
        judge_(begin[i], response.varbinds[i]);
      }
    } else if (number > 1) {  // Which of them is it, or are they too many?
      Some(begin, begin + number / 2);
      Some(begin + number / 2, end);
    } else {
      served_.Add(report_, Fault::NoAnswer, begin->instance,
                  "asked with " + ToText(begin->name) + ", it gets " +
                      ErrorText(response));
    }
  }

  Manager& manager_;
  Served& served_;
  Report& report_;
  Ask ask_;
  Judge judge_;
};

// Whether GETNEXT shows an instance now, too. Rows come and go.
bool IsStillShown(Manager& manager, const Served& served, std::size_t i) {
  const Oid& name = served.all[i].name;
  const Oid before =
      i > 0 ? served.all[i - 1].name : served.module.ObjectOf(name)->oid;
  const Response response = manager.GetNext({before});
  return response.Succeeded() && !response.varbinds.empty() &&
         response.varbinds[0].name == name;
}

bool IsStillThere(Manager& manager, const Oid& name) {
  const Response response = manager.Get({name});
  return response.Succeeded() && !response.varbinds.empty() &&
         !response.varbinds[0].value.IsException();
}

}  // namespace

void CheckGets(Manager& manager, Served& served, Report& report) {
  std::vector<Question> questions;
  for (std::size_t i = 0; i < served.all.size(); ++i) {
    if (served.module.ObjectOf(served.all[i].name)) {
      questions.push_back({served.all[i].name, i});
    }
  }
  const auto judge = [&](const Question& question, const Varbind& got) {
    const Varbind& shown = served.all[question.instance];
    if (got.name == shown.name && got.value.Type() == shown.value.Type()) {
      return;
    }
    if (!IsStillShown(manager, served, question.instance)) return;
    served.Add(report, Fault::Get, question.instance,
               "GETNEXT shows " + TypeName(shown.value.Type()) +
                   ", GET answers with " + TypeName(got.value.Type()));
  };
  Asking(manager, served, report, &Manager::Get, judge).All(questions);
}

void CheckEnds(Manager& manager, Served& served, Report& report) {
  std::vector<Question> questions;
  for (const MibObject& object : served.module.Objects()) {
    const std::vector<std::size_t>& instances = served.Of(object).instances;
    if (instances.empty()) continue;
    questions.push_back({object.oid, instances.front()});
    // Behind the last one of all, anything may come.
    const std::size_t last = instances.back();
    if (last + 1 == served.all.size()) continue;
    questions.push_back({served.all[last].name, last + 1});
  }
  const auto judge = [&](const Question& question, const Varbind& got) {
    const Oid& expected = served.all[question.instance].name;
    const bool exception = got.value.IsException();
    const bool isNew =
        got.name > question.name && got.name < expected && !exception;
    if (got.name == expected || isNew) return;
    if (!IsStillThere(manager, expected)) return;
    served.Add(report, Fault::End, question.instance,
               "GETNEXT from " + ToText(question.name) + " goes to " +
                   (exception ? TypeName(got.value.Type()) : ToText(got.name)) +
                   " instead");
  };
  Asking(manager, served, report, &Manager::GetNext, judge).All(questions);
}

}  // namespace snmpsubagent::check
