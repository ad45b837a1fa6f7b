// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "runtime/ReplyTimeout.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/time.h>

#include <cerrno>
#include <cstdio>

#include "NetSNMP.h"
#include "runtime/AgentSession.h"
#include "runtime/ConnectTimeout.h"
#include "runtime/Log.h"

namespace {

using Clock = std::chrono::steady_clock;

// The version number that Net-SNMP gives AgentX sessions. No installed header
// has it.
constexpr long kAgentXVersion = 0xC1;

// agentx-Response-PDU, in the second byte of a PDU (RFC 2741).
constexpr unsigned char kResponse = 18;

struct {
  std::chrono::microseconds timeout{0};
  int retries = 0;
} limit;

auto& watched = agentSession.transport;

// Whether unread data has arrived: this thread may not have got to read it.
bool HasArrived(int socket) {
  pollfd descriptor = {socket, POLLIN, 0};
  return poll(&descriptor, 1, 0) == 1;
}

bool MasterHangs(const netsnmp_transport& transport) {
  return watched.waiting &&
         Clock::now() - watched.since >= limit.timeout * (limit.retries + 1) &&
         !HasArrived(transport.sock);
}

void BeginWaiting(const void* bytes) {
  const bool isResponse =
      static_cast<const unsigned char*>(bytes)[1] == kResponse;
  if (watched.waiting || isResponse) return;
  watched.waiting = true;
  watched.since = Clock::now();
}

// These two replace the transport's own functions.

int Receive(netsnmp_transport* transport, void* buffer, int size, void** opaque,
            int* opaqueSize) {
  watched.waiting = false;
  return watched.receive(transport, buffer, size, opaque, opaqueSize);
}

int SendUnlessGivenUp(netsnmp_transport* transport, const void* bytes, int size,
                      void** opaque, int* opaqueSize) {
  if (MasterHangs(*transport)) watched.givenUp = true;
  if (!watched.givenUp) {
    BeginWaiting(bytes);
    const int sent = watched.send(transport, bytes, size, opaque, opaqueSize);
    if (sent == size) return sent;
    // What was sent in part cannot be completed.
    watched.givenUp = true;
  }
  shutdown(transport->sock, SHUT_RDWR);
  errno = ETIMEDOUT;
  return -1;
}

// A newer Net-SNMP may give its AgentX sessions another number.
void LogUnlessApplied(const netsnmp_session& session) {
  if (session.version == kAgentXVersion) return;
  char version[32];
  std::snprintf(version, sizeof(version), "0x%lX, not 0x%lX",
                static_cast<unsigned long>(session.version),
                static_cast<unsigned long>(kAgentXVersion));
  LogLine(std::string("SNMPSubAgent: the reply timeout does not shorten that "
                      "of Net-SNMP, whose AgentX sessions have version ") +
          version);
}

timeval ToTimeval(std::chrono::microseconds time) {
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time);
  return {static_cast<time_t>(seconds.count()),
          static_cast<suseconds_t>((time - seconds).count())};
}

}  // namespace

void reply_timeout::Set(std::chrono::microseconds timeout, int retries) {
  limit.timeout = timeout;
  limit.retries = retries;
  connect_timeout::Set(ToTimeval(timeout));
}

void reply_timeout::ApplyTo(netsnmp_session* session) {
  if (limit.timeout.count() == 0 || session->version != kAgentXVersion) return;
  session->timeout = static_cast<long>(limit.timeout.count());
  session->retries = limit.retries;
}

void reply_timeout::Enforce(netsnmp_session* session) {
  if (limit.timeout.count() == 0) return;
  netsnmp_transport* const transport =
      snmp_sess_transport(snmp_sess_pointer(session));
  if (transport == nullptr || transport->f_send == SendUnlessGivenUp) return;
  LogUnlessApplied(*session);
  // A master agent that does not read lets the buffers fill.
  const timeval timeout = ToTimeval(limit.timeout);
  setsockopt(transport->sock, SOL_SOCKET, SO_SNDTIMEO, &timeout,
             sizeof(timeout));
  watched = {transport->f_send, transport->f_recv, false, {}, false};
  transport->f_send = SendUnlessGivenUp;
  transport->f_recv = Receive;
}
