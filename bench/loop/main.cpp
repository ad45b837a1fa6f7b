// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// What the system alone takes for a request: a subagent that waits, receives,
// and sends a response that it has made before it began.
//
//   bench_loop scalars MASTER COUNT
//
// It understands the Get of one scalar in network byte order that arrives in
// one piece, and nothing else. Ends on SIGTERM.
#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <sys/epoll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "objects/objects.h"
#include "testkit/agentx/Codec.h"

namespace agentx = testkit::agentx;

namespace {

using agentx::Bytes;
using agentx::Type;

// Where a Get has the ids that a response repeats, and the scalar's number. The
// name begins with four octets for its first five sub-identifiers.
constexpr std::size_t kIds = 4;
constexpr std::size_t kIdsSize = 12;
constexpr std::size_t kNumber = agentx::kHeaderSize + 4 + 3 * 4;

void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "bench_loop: no %s\n", what);
  std::exit(1);
}

agentx::Value ValueOf(unsigned int k) {
  bench_values values;
  bench_values_of(k, &values);
  switch (bench_type_of_scalar(k)) {
    case BENCH_NUMBER:
      return {Type::kInteger, values.number};
    case BENCH_COUNT:
      return {Type::kGauge32, values.count};
    case BENCH_DESCRIPTION:
      return {Type::kOctetString, std::string(values.description)};
    case BENCH_LABEL:
      return {Type::kOctetString, std::string(values.label)};
    case BENCH_ENABLED:
      return {Type::kInteger, values.enabled ? 1 : 2};
    default:
      return {Type::kOctetString, std::string(std::begin(values.address),
                                              std::end(values.address))};
  }
}

// By the number of the scalar; there is none with the number 0.
std::vector<Bytes> ResponsesFor(unsigned int count) {
  std::vector<Bytes> responses(1);
  for (unsigned int k = 1; k <= count; ++k) {
    agentx::Response response;
    response.varbinds = {{{BENCH_ROOT, BENCH_SCALARS, k, 0}, ValueOf(k)}};
    responses.push_back(agentx::Encode({{}, {}, std::move(response)}));
  }
  return responses;
}

template <typename Address>
int Connected(const Address& master, int family) {
  const int connection = socket(family, SOCK_STREAM, 0);
  Require(connect(connection, reinterpret_cast<const sockaddr*>(&master),
                  sizeof master) == 0,
          "master agent");
  return connection;
}

int ConnectOverTcp(int port) {
  sockaddr_in master{};
  master.sin_family = AF_INET;
  master.sin_port = htons(static_cast<std::uint16_t>(port));
  master.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  const int connection = Connected(master, AF_INET);
  const int atOnce = 1;
  setsockopt(connection, IPPROTO_TCP, TCP_NODELAY, &atOnce, sizeof atOnce);
  return connection;
}

int ConnectOverUnix(const std::string& path) {
  sockaddr_un master{};
  master.sun_family = AF_UNIX;
  path.copy(master.sun_path, sizeof master.sun_path - 1);
  return Connected(master, AF_UNIX);
}

// `master` is "unix:/path", or an address of TCP that ends in the port.
int ConnectTo(const std::string& master) {
  const std::size_t colon = master.rfind(':');
  const std::string end = master.substr(colon + 1);
  return master.compare(0, colon, "unix") == 0
             ? ConnectOverUnix(end)
             : ConnectOverTcp(std::atoi(end.c_str()));
}

// Sends a message of the session; returns the session that the response names.
std::uint32_t Ask(int connection, std::uint32_t session, agentx::Body body) {
  agentx::Pdu pdu{{}, {}, std::move(body)};
  pdu.header.sessionId = session;
  const Bytes message = agentx::Encode(std::move(pdu));
  Require(send(connection, message.data(), message.size(), 0) > 0,
          "connection");
  Bytes response = agentx::Encode({{}, {}, agentx::Response{}});
  Require(recv(connection, response.data(), response.size(), MSG_WAITALL) > 0,
          "response");
  return agentx::Decode(response.data(), response.size()).header.sessionId;
}

void OpenSession(int connection) {
  agentx::Register scalars;
  scalars.subtree = {BENCH_ROOT, BENCH_SCALARS};
  Ask(connection, Ask(connection, 0, agentx::Open{}), scalars);
}

unsigned int NumberIn(const std::uint8_t* get) {
  return static_cast<unsigned int>(get[kNumber] << 24 | get[kNumber + 1] << 16 |
                                   get[kNumber + 2] << 8 | get[kNumber + 3]);
}

void Serve(const bench_order& order) {
  std::vector<Bytes> responses = ResponsesFor(order.count);
  const int connection = ConnectTo(order.master);
  const int epoll = epoll_create1(0);
  epoll_event event{};
  event.events = EPOLLIN | EPOLLET;
  epoll_ctl(epoll, EPOLL_CTL_ADD, connection, &event);
  OpenSession(connection);
  std::array<std::uint8_t, 512> get;
  for (;;) {
    epoll_wait(epoll, &event, 1, -1);
    Require(recv(connection, get.data(), get.size(), 0) > 0, "request");
    Bytes& response = responses[NumberIn(get.data())];
    std::copy_n(get.data() + kIds, kIdsSize, response.data() + kIds);
    send(connection, response.data(), response.size(), 0);
  }
}

}  // namespace

int main(int argc, char** argv) {
  const bench_order order = bench_order_of(argc, argv);
  bench_expect_end();
  std::thread(Serve, std::cref(order)).detach();
  bench_wait_for_end();
  // No orderly shutdown: the benchmark is over.
  std::_Exit(0);
}
