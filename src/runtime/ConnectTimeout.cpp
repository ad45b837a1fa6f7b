// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "runtime/ConnectTimeout.h"

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstring>
#include <string>

#include "NetSNMP.h"

namespace {

timeval connectTimeout;

// A transport "tcp" that comes before the agent library's own in its list,
// where the OID is only a key: zeroDotZero, which nothing else has.
netsnmp_tdomain domain;
const unsigned long kKey[] = {0, 0};

// transportDomainTcpIpv4 (RFC 3419).
const unsigned long kTcpDomain[] = {1, 3, 6, 1, 2, 1, 100, 1, 5};

bool IsMaster(const char* target) {
  const char* const socket = netsnmp_ds_get_string(NETSNMP_DS_APPLICATION_ID,
                                                   NETSNMP_DS_AGENT_X_SOCKET);
  return socket != nullptr && socket == std::string("tcp:") + target;
}

// The agent library's own transport of this name comes later in the list.
netsnmp_transport* CreateOrdinary(const char* target, int local,
                                  const char* defaultTarget) {
  for (const auto* other = domain.next; other != nullptr; other = other->next) {
    if (std::strcmp(other->prefix[0], "tcp") == 0) {
      return other->f_create_from_tstring_new(target, local, defaultTarget);
    }
  }
  return nullptr;
}

// Returns a connected socket, or -1.
int Connect(const sockaddr_in& address) {
  const int connection = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (connection < 0) return -1;
  // Limits connect() as well.
  setsockopt(connection, SOL_SOCKET, SO_SNDTIMEO, &connectTimeout,
             sizeof(connectTimeout));
  if (connect(connection, reinterpret_cast<const sockaddr*>(&address),
              sizeof(address)) != 0) {
    close(connection);
    return -1;
  }
  return connection;
}

char* FormatAddress(netsnmp_transport* transport, const void* data, int size) {
  return netsnmp_ipv4_fmtaddr("TCP", transport, data, size);
}

// As the agent library makes its own.
netsnmp_transport* NewTransport(int connection, const sockaddr_in& address) {
  netsnmp_indexed_addr_pair addresses = {};
  std::memcpy(&addresses.remote_addr, &address, sizeof(address));
  auto* const transport = SNMP_MALLOC_TYPEDEF(netsnmp_transport);
  if (transport == nullptr) return nullptr;
  transport->data = netsnmp_memdup(&addresses, sizeof(addresses));
  transport->remote = netsnmp_memdup(&address, sizeof(address));
  if (transport->data == nullptr || transport->remote == nullptr) {
    netsnmp_transport_free(transport);
    return nullptr;
  }
  transport->data_length = sizeof(addresses);
  transport->remote_length = sizeof(address);
  transport->domain = kTcpDomain;
  transport->domain_length = OID_LENGTH(kTcpDomain);
  transport->sock = connection;
  transport->flags = NETSNMP_TRANSPORT_FLAG_STREAM;
  transport->msgMaxSize = SNMP_MAX_PACKET_LEN;
  transport->f_recv = netsnmp_tcpbase_recv;
  transport->f_send = netsnmp_tcpbase_send;
  transport->f_close = netsnmp_socketbase_close;
  transport->f_fmtaddr = FormatAddress;
  transport->f_get_taddr = netsnmp_ipv4_get_taddr;
  return transport;
}

netsnmp_transport* Create(const char* target, int local,
                          const char* defaultTarget) {
  if (local != 0 || !IsMaster(target)) {
    return CreateOrdinary(target, local, defaultTarget);
  }
  sockaddr_in address;
  if (netsnmp_sockaddr_in2(&address, target, defaultTarget) == 0) {
    return nullptr;
  }
  const int connection = Connect(address);
  if (connection < 0) return nullptr;
  netsnmp_transport* const transport = NewTransport(connection, address);
  if (transport == nullptr) close(connection);
  return transport;
}

}  // namespace

void connect_timeout::Set(const timeval& timeout) {
  connectTimeout = timeout;
  NetSNMP::init_snmp_tdomain(&domain, kKey, OID_LENGTH(kKey));
  if (domain.prefix == nullptr) return;
  domain.f_create_from_tstring_new = Create;
  NetSNMP::register_snmp_tdomain(&domain);
}
