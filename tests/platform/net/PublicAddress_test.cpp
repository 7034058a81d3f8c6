#include "platform/net/PublicAddress.h"

#include <arpa/inet.h>
#include <cstring>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <string>
#include <sys/un.h>

namespace torvex {
namespace {

bool isPublic(const std::string& text) {
    sockaddr_storage storage{};
    if (text.find(':') == std::string::npos) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        EXPECT_EQ(inet_pton(AF_INET, text.c_str(), &address.sin_addr), 1) << text;
        std::memcpy(&storage, &address, sizeof address);
    } else {
        sockaddr_in6 address{};
        address.sin6_family = AF_INET6;
        EXPECT_EQ(inet_pton(AF_INET6, text.c_str(), &address.sin6_addr), 1) << text;
        std::memcpy(&storage, &address, sizeof address);
    }
    return isPublicAddress(*static_cast<const sockaddr*>(static_cast<const void*>(&storage)));
}

TEST(PublicAddress, TheOpenInternetIsPublic) {
    for (const char* address :
         {"1.1.1.1",         "9.255.255.255",    "11.0.0.0",        "100.63.255.255", "100.128.0.0",
          "126.255.255.255", "128.0.0.0",        "169.253.255.255", "169.255.0.0",    "172.15.255.255",
          "172.32.0.0",      "192.0.1.0",        "192.167.255.255", "192.169.0.0",    "198.17.255.255",
          "198.20.0.0",      "223.255.255.255",  "2600::1",         "2001:200::1",    "2a00:1450::1",
          "::ffff:1.1.1.1",  "64:ff9b::1.1.1.1", "2002:101:101::1"}) {
        EXPECT_TRUE(isPublic(address)) << address;
    }
}

TEST(PublicAddress, WhatIsKeptForSomethingIsNot) {
    for (const char* address :
         {"0.0.0.0",         "0.255.255.255",  "10.0.0.0",        "10.255.255.255",  "100.64.0.0",
          "100.127.255.255", "127.0.0.1",      "127.255.255.255", "169.254.169.254", "172.16.0.0",
          "172.31.255.255",  "192.0.0.1",      "192.0.2.1",       "192.88.99.1",     "192.168.0.1",
          "198.18.0.1",      "198.19.255.255", "198.51.100.1",    "203.0.113.1",     "224.0.0.1",
          "239.255.255.255", "240.0.0.1",      "255.255.255.255"}) {
        EXPECT_FALSE(isPublic(address)) << address;
        EXPECT_FALSE(isPublic(std::string("::ffff:") + address)) << address;
        EXPECT_FALSE(isPublic(std::string("64:ff9b::") + address)) << address;
    }
    for (const char* address :
         {"::", "::1", "::7f00:1", "fe80::1", "febf::1", "fec0::1", "fc00::1", "fdff::1", "ff02::1",
          "2001:db8::1", "2001::1", "2001:1ff::1", "2002:7f00:1::1", "2002:a00:1::1", "64:ff9b:1::1",
          "100::1", "3fff::1", "4000::1"}) {
        EXPECT_FALSE(isPublic(address)) << address;
    }
}

TEST(PublicAddress, OtherKindsAreNot) {
    sockaddr address{};
    address.sa_family = AF_UNIX;
    EXPECT_FALSE(isPublicAddress(address));
}

}  // namespace
}  // namespace torvex
