// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetworkInterfaces.h"

#include <gtest/gtest.h>

TEST(TheHost, HasTheUsualLoopbackAddress) {
  EXPECT_EQ("127.0.0.1", NetworkInterfaces::loopbackIPv4());
}

TEST(TheHost, RecognisesItsOwnLoopbackAddress) {
  EXPECT_TRUE(
      NetworkInterfaces::isLoopbackIPv4(NetworkInterfaces::loopbackIPv4()));
}

TEST(TheHost, RecognisesTheWholeLoopbackNetwork) {
  for (const char* address :
       {"127.0.0.0", "127.0.0.2", "127.1.2.3", "127.255.255.255"}) {
    EXPECT_TRUE(NetworkInterfaces::isLoopbackIPv4(address)) << address;
  }
}

TEST(TheHost, TakesNoOtherAddressForLoopback) {
  for (const char* address :
       {"126.255.255.255", "128.0.0.0", "0.0.0.0", "1.0.0.127", "192.0.2.1"}) {
    EXPECT_FALSE(NetworkInterfaces::isLoopbackIPv4(address)) << address;
  }
}

TEST(TheHost, TakesTextThatIsNoDottedQuadForNoLoopbackAddress) {
  for (const char* text :
       {"", "localhost", "::1", "127", "127.1", "127.0.0", "127.0.0.",
        "127..0.1", "127.0.0.1.1", "127.0.0.256", "127.0.0.01", "0x7f.0.0.1",
        "127.0.0.-1", "127.0.0.+1", " 127.0.0.1", "127.0.0.1 ", "127.0.0.1:705",
        "127.0.0.a", "127,0,0,1"}) {
    EXPECT_FALSE(NetworkInterfaces::isLoopbackIPv4(text)) << text;
  }
}

TEST(TheHost, DoesNotStopReadingAnAddressAtANul) {
  EXPECT_FALSE(NetworkInterfaces::isLoopbackIPv4(
      std::string("127.0.0.1\0.evil", sizeof "127.0.0.1\0.evil" - 1)));
}
