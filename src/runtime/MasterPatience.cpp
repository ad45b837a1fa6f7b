// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "runtime/MasterPatience.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/time.h>

#include <cerrno>

#include "NetSNMP.h"
#include "runtime/BoundedConnect.h"

namespace {

using Clock = std::chrono::steady_clock;
using Send = int (*)(netsnmp_transport*, const void*, int, void**, int*);
using Receive = int (*)(netsnmp_transport*, void*, int, void**, int*);

// The version by which the agent library tells AgentX sessions from others. No
// header that it installs has it.
constexpr long kAgentXVersion = 0xC1;

// agentx-Response-PDU, in the second byte of a PDU (RFC 2741).
constexpr unsigned char kResponse = 18;

struct {
  std::chrono::microseconds timeout{0};
  int retries = 0;
} limit;

// The session that is watched. There is one to the master agent at a time.
struct {
  Send send = nullptr;
  Receive receive = nullptr;
  bool waiting = false;  // for anything to come, since a request was sent
  Clock::time_point since;
  bool givenUp = false;
} watched;

int OnSessionInit(int /*majorID*/, int /*minorID*/, void* serverArg,
                  void* /*clientArg*/) {
  auto* const session = static_cast<netsnmp_session*>(serverArg);
  if (session->version == kAgentXVersion) {
    session->timeout = static_cast<long>(limit.timeout.count());
    session->retries = limit.retries;
  }
  return 0;
}

// Whether something arrived that was not read yet: this thread may have been
// kept from it.
bool HasArrived(int socket) {
  pollfd descriptor = {socket, POLLIN, 0};
  return poll(&descriptor, 1, 0) == 1;
}

bool MasterHangs(const netsnmp_transport& transport) {
  return watched.waiting &&
         Clock::now() - watched.since >= limit.timeout * (limit.retries + 1) &&
         !HasArrived(transport.sock);
}

void NoteSending(const void* bytes) {
  const bool isResponse =
      static_cast<const unsigned char*>(bytes)[1] == kResponse;
  if (watched.waiting || isResponse) return;
  watched.waiting = true;
  watched.since = Clock::now();
}

// These two stand in the place of the transport's own functions.

int ReceiveAndNote(netsnmp_transport* transport, void* buffer, int size,
                   void** opaque, int* opaqueSize) {
  watched.waiting = false;
  return watched.receive(transport, buffer, size, opaque, opaqueSize);
}

int SendUnlessGivenUp(netsnmp_transport* transport, const void* bytes, int size,
                      void** opaque, int* opaqueSize) {
  if (MasterHangs(*transport)) watched.givenUp = true;
  if (!watched.givenUp) {
    NoteSending(bytes);
    const int sent = watched.send(transport, bytes, size, opaque, opaqueSize);
    if (sent == size) return sent;
    // What was sent in part cannot be made whole.
    watched.givenUp = true;
  }
  shutdown(transport->sock, SHUT_RDWR);
  errno = ETIMEDOUT;
  return -1;
}

timeval ToTimeval(std::chrono::microseconds time) {
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time);
  return {seconds.count(), (time - seconds).count()};
}

}  // namespace

void master_patience::Limit(std::chrono::microseconds timeout, int retries) {
  limit.timeout = timeout;
  limit.retries = retries;
  BoundConnecting(ToTimeval(timeout));
  snmp_register_callback(SNMP_CALLBACK_LIBRARY, SNMP_CALLBACK_SESSION_INIT,
                         OnSessionInit, nullptr);
}

void master_patience::Watch(netsnmp_session* session) {
  if (limit.timeout.count() == 0) return;
  netsnmp_transport* const transport =
      snmp_sess_transport(snmp_sess_pointer(session));
  if (transport == nullptr || transport->f_send == SendUnlessGivenUp) return;
  // A master agent that does not read lets the buffers fill.
  const timeval timeout = ToTimeval(limit.timeout);
  setsockopt(transport->sock, SOL_SOCKET, SO_SNDTIMEO, &timeout,
             sizeof(timeout));
  watched = {transport->f_send, transport->f_recv, false, {}, false};
  transport->f_send = SendUnlessGivenUp;
  transport->f_recv = ReceiveAndNote;
}
