// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_NETSNMPSMINODEDATA_H_
#define SNMPSUBAGENT_NETSNMPSMINODEDATA_H_

#include "NetSNMPByteNodeData.h"
#include "NetSNMPNodeData.h"
#include "NetSNMPStringNodeData.h"
#include "NetSNMPUnsignedIntNodeData.h"

// A value of the class `Value` that managers see as `asnType`, another type of
// SMIv2 (RFC 2578) than the class's own. Constructors, storage, setters and the
// handling of a SET are those of `Value`; its bytes are sent unchanged.
template <class Value, unsigned char asnType>
class NetSNMPSmiNodeData : public Value {
 public:
  using Value::Value;

  NetSNMPNodeData* Clone() const override {
    return new NetSNMPSmiNodeData(*this);
  }
  unsigned char NodeASNDataType() const override { return asnType; }
};

// Counter32, over an `unsigned int`. Wraps around as the variable does.
using NetSNMPCounter32NodeData =
    NetSNMPSmiNodeData<NetSNMPUnsignedIntNodeData, 0x41>;

// TimeTicks, over an `unsigned int`: hundredths of a second.
using NetSNMPTimeTicksNodeData =
    NetSNMPSmiNodeData<NetSNMPUnsignedIntNodeData, 0x43>;

// IpAddress, over 4 bytes in network order.
using NetSNMPIpAddressNodeData = NetSNMPSmiNodeData<NetSNMPByteNodeData, 0x40>;

// OBJECT IDENTIFIER, over an array of `unsigned long`; its size, like that of
// every buffer, is in bytes.
using NetSNMPObjectIdNodeData = NetSNMPSmiNodeData<NetSNMPByteNodeData, 0x06>;

// Counter64, over a `counter64` of the agent library (NetSNMP.h): its members
// `high` and `low` are 32 bits each.
using NetSNMPCounter64NodeData = NetSNMPSmiNodeData<NetSNMPByteNodeData, 0x46>;

// Opaque, over the bytes of a `std::string`.
using NetSNMPOpaqueNodeData = NetSNMPSmiNodeData<NetSNMPStringNodeData, 0x44>;

// A cell that a row of a table does not have: a GET is answered with
// noSuchInstance (RFC 3416), a GETNEXT skips it. Without storage.
using NetSNMPAbsentNodeData = NetSNMPSmiNodeData<NetSNMPNodeData, 0x81>;

#endif  // SNMPSUBAGENT_NETSNMPSMINODEDATA_H_
