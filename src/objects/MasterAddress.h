// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_OBJECTS_MASTERADDRESS_H_
#define SNMPSUBAGENT_OBJECTS_MASTERADDRESS_H_

#include <sys/socket.h>

#include <string>
#include <vector>

namespace snmpsubagent::detail {

// Where the master agent listens, as AgentOptions::master says it.
class MasterAddress {
 public:
  // Throws std::invalid_argument, with the forms that there are.
  explicit MasterAddress(std::string text);

  const std::string& Text() const { return text_; }

  // One socket address to connect to.
  struct Endpoint {
    sockaddr_storage address;
    socklen_t size;
  };

  // The addresses, if no name has to be looked up; empty if one has to.
  std::vector<Endpoint> Known() const;
  // Looks the name up, which may take many seconds. Empty, with the reason, if
  // there is none.
  std::vector<Endpoint> LookUp(std::string& reason) const;

 private:
  std::vector<Endpoint> Resolve(int flags, std::string& reason) const;

  std::string text_;
  int family_;
  std::string host_;  // the path of a Unix socket
  std::string port_;
};

}  // namespace snmpsubagent::detail

#endif  // SNMPSUBAGENT_OBJECTS_MASTERADDRESS_H_
