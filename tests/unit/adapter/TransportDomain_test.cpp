// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

#include "NetSNMP.h"
#include "support/Oid.h"

namespace {

class ATransportDomain : public testing::Test {
 protected:
  // From malloc, as the wrappers require.
  static netsnmp_tdomain* Allocate() {
    return static_cast<netsnmp_tdomain*>(
        std::calloc(1, sizeof(netsnmp_tdomain)));
  }

  netsnmp_tdomain* Initialized() {
    netsnmp_tdomain* const domain = Allocate();
    NetSNMP::init_snmp_tdomain(domain, kName.data(), Length(kName));
    return domain;
  }

  bool Supported() {
    return netsnmp_tdomain_support(kName.data(), kName.size(), nullptr,
                                   nullptr) == 1;
  }

  const Oid kName = TestOid({9});
};

TEST_F(ATransportDomain, RefersToItsNameAndHasTheOnePrefixTcp) {
  netsnmp_tdomain domain;
  EXPECT_EQ(NetSNMP::init_snmp_tdomain(&domain, kName.data(), Length(kName)),
            0);
  EXPECT_EQ(domain.name, kName.data());
  EXPECT_EQ(domain.name_length, kName.size());
  EXPECT_STREQ(domain.prefix[0], "tcp");
  EXPECT_EQ(domain.prefix[1], nullptr);
  std::free(domain.prefix);
}

TEST_F(ATransportDomain, IsNotTouchedOtherwise) {
  netsnmp_tdomain domain;
  std::memset(&domain, 0xA5, sizeof domain);
  netsnmp_tdomain expected = domain;
  NetSNMP::init_snmp_tdomain(&domain, kName.data(), Length(kName));
  expected.name = domain.name;
  expected.name_length = domain.name_length;
  expected.prefix = domain.prefix;
  EXPECT_EQ(std::memcmp(&domain, &expected, sizeof domain), 0);
  std::free(domain.prefix);
}

TEST_F(ATransportDomain, IsKnownFromItsRegistrationToItsEnd) {
  netsnmp_tdomain* const domain = Initialized();
  EXPECT_FALSE(Supported());
  EXPECT_EQ(NetSNMP::register_snmp_tdomain(domain), 1);
  EXPECT_TRUE(Supported());
  EXPECT_EQ(NetSNMP::register_snmp_tdomain(domain), 0);
  EXPECT_EQ(NetSNMP::unregister_snmp_tdomain(domain), 1);
  EXPECT_FALSE(Supported());
}

TEST_F(ATransportDomain, IsFreedToo) {
  netsnmp_tdomain* const domain = Initialized();
  const char** const prefix = domain->prefix;
  EXPECT_EQ(NetSNMP::unregister_snmp_tdomain(domain), 0);
  EXPECT_STREQ(prefix[0], "tcp");
  std::free(prefix);
  EXPECT_EQ(NetSNMP::unregister_snmp_tdomain(nullptr), 0);
}

}  // namespace
