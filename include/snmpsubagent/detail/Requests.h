// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_REQUESTS_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_REQUESTS_H_

#include <cstdint>
#include <memory>

#include "snmpsubagent/Export.h"
#include "snmpsubagent/Later.h"
#include "snmpsubagent/ValueWriter.h"
#include "snmpsubagent/detail/ManagedObject.h"

// What objects may do with the request that they serve.
namespace snmpsubagent::detail {

// Where the value of the instance that is being read goes.
SNMPSUBAGENT_OBJECTS_EXPORT ValueWriter& WriterOf(ReadContext& context);

// Puts the request aside until the call is answered. Deferred() then tells what
// to return: the answer, if it has come already.
SNMPSUBAGENT_OBJECTS_EXPORT std::shared_ptr<LaterCall> Defer(
    ReadContext& context);
SNMPSUBAGENT_OBJECTS_EXPORT Answer Deferred(ReadContext& context);

SNMPSUBAGENT_OBJECTS_EXPORT std::shared_ptr<LaterCall> Defer(
    Transaction& transaction);
// None, an error, or nothing as long as there is no answer.
SNMPSUBAGENT_OBJECTS_EXPORT bool Answered(Transaction& transaction,
                                          SetError& error);

// What the transaction changes of `object`; null for nothing. Of a table that
// is the first of its rows.
SNMPSUBAGENT_OBJECTS_EXPORT Change* FindChange(const Transaction& transaction,
                                               const ManagedObject& object);
SNMPSUBAGENT_OBJECTS_EXPORT void AddChange(Transaction& transaction,
                                           std::unique_ptr<Change> change);
// The varbind that is being staged, counted from 1.
SNMPSUBAGENT_OBJECTS_EXPORT std::uint16_t CurrentVarbind(
    const Transaction& transaction);
// Whether another transaction that is under way changes `object`.
SNMPSUBAGENT_OBJECTS_EXPORT bool ChangedElsewhere(
    const Transaction& transaction, const ManagedObject& object);

// Logs the exception that is being handled, which `object` has met; the error
// is GenErr.
SNMPSUBAGENT_OBJECTS_EXPORT SetError
ReportException(const ManagedObject& object) noexcept;

}  // namespace snmpsubagent::detail

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_REQUESTS_H_
