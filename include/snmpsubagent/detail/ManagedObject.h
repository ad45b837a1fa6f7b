// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_MANAGEDOBJECT_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_MANAGEDOBJECT_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>

#include "snmpsubagent/Export.h"
#include "snmpsubagent/Oid.h"
#include "snmpsubagent/SetError.h"
#include "snmpsubagent/ValueView.h"

// What lies behind the classes that an application uses; not for its own use.
namespace snmpsubagent::detail {

class AgentState;
class ModuleState;
class ReadContext;
class Transaction;

// What came of reading an instance.
enum class Answer {
  Written,  // name and value have been written
  Absent,   // there is no such instance now
  Beyond,   // the next instance is not before the end of the request's range
  Failed,   // genErr
  Deferred  // somebody answers later, see LaterCall
};

// What a module serves below one OID, for all requests: a scalar, a table. Kept
// alive by the handle that the application has (Scalar, Table) and by requests
// under way; once it is withdrawn, managers no longer see it, and nothing of
// the application is touched.
//
// Threads: every operation under the agent's lock, unless it says otherwise.
class SNMPSUBAGENT_OBJECTS_EXPORT ManagedObject
    : public std::enable_shared_from_this<ManagedObject> {
 public:
  // `oid` is relative to the module, or whole with a dot in front. Throws
  // std::invalid_argument if it is no OID, or not within the module. An object
  // with only one instance names it.
  ManagedObject(std::shared_ptr<ModuleState> module, std::string_view oid,
                OidView instance = {});
  virtual ~ManagedObject();
  ManagedObject(const ManagedObject&) = delete;
  ManagedObject& operator=(const ManagedObject&) = delete;

  // Below which OID its instances are.
  OidView Name() const { return name_.View().First(size_); }
  // The name of its only instance.
  OidView InstanceName() const { return name_; }
  const std::shared_ptr<AgentState>& Agent() const;
  ModuleState& Module() const { return *module_; }

  // Managers see it from here on, until Withdraw(). Throws
  // std::invalid_argument if another object has its OID or one above or below
  // it. Both take the lock.
  void Serve();
  void Withdraw();
  bool IsServed() const { return served_; }

  // Writes the instance whose name ends, behind Name(), in `instance`.
  virtual Answer Read(OidView instance, ReadContext& context) = 0;
  // Writes the first instance behind `instance`, or with `include` also that
  // one.
  virtual Answer ReadNext(OidView instance, bool include,
                          ReadContext& context) = 0;
  // Whether this is the name of an object type or of something below one: else
  // a GET answers noSuchObject.
  virtual bool HasObjectAt(OidView instance) const = 0;
  // Checks a varbind of a TestSet by itself and stages its value in the
  // transaction.
  virtual SetError Stage(OidView instance, const ValueView& value,
                         Transaction& transaction) = 0;

 private:
  friend class ObjectIndex;

  std::shared_ptr<ModuleState> module_;
  const Oid name_;
  const std::uint8_t size_;  // of the object's name, without the instance
  bool served_ = false;
};

// How far a step of a SET has come.
enum class Step { Done, Refused, Deferred };

// What a SET changes in one piece, a scalar or a row, from TestSet to the end.
//
// Threads: every operation under the agent's lock.
class SNMPSUBAGENT_OBJECTS_EXPORT Change {
 public:
  explicit Change(std::shared_ptr<ManagedObject> object)
      : object_(std::move(object)) {}
  virtual ~Change();
  Change(const Change&) = delete;
  Change& operator=(const Change&) = delete;

  ManagedObject& Object() const { return *object_; }

  // Asked once all varbinds of the PDU are staged: the application's checks.
  // `varbind` is the first that has staged something of it, and may be set to
  // another one that is to blame.
  virtual SetError Check(std::uint16_t& varbind) = 0;
  // Whether Check() has seen all that is staged.
  bool IsChecked() const { return isChecked_; }
  void SetChecked(bool checked) { isChecked_ = checked; }

  // Stores the new value and has the application apply it. Refused leaves
  // everything as it was before. After Deferred, Resumed() brings the answer.
  virtual Step Commit(Transaction& transaction) = 0;
  // What an `Apply` function that took its time has answered.
  virtual Step Resumed(SetError error) = 0;
  // After Commit() or Resumed() returned Done. Refused if it cannot be undone.
  virtual Step Undo(Transaction& transaction) = 0;
  // It is final.
  virtual void Finish() = 0;

 private:
  std::shared_ptr<ManagedObject> object_;
  bool isChecked_ = false;
};

}  // namespace snmpsubagent::detail

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_MANAGEDOBJECT_H_
