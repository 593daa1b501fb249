#include "Utilities/HostRules.h"

#include <gtest/gtest.h>

namespace wrapio {

TEST(HostRules, take_the_local_machine_and_private_networks_for_internal) {
    for (const char* host : {"localhost", "LOCALHOST", "localhost.localdomain", "api.localhost", "127.0.0.1", "127.x",
                             "::1", "[::1]", "10.0.0.1", "169.254.3.3", "172.16.0.1", "172.20.0.5", "172.31.255.255",
                             "192.168.1.20", "printer.local", "Printer.LOCAL"})
        EXPECT_TRUE(isInternalHost(host)) << host;
}

TEST(HostRules, take_other_hosts_for_external) {
    for (const char* host : {"example.com", "172.15.0.1", "172.32.0.1", "192.169.0.1", "169.253.0.1", "11.0.0.1",
                             "0.0.0.0", "fe80::1", "8.8.8.8", "local.example", "mylocalhost"})
        EXPECT_FALSE(isInternalHost(host)) << host;
}

TEST(HostRules, stay_literal_about_what_counts_as_private) {
    EXPECT_TRUE(isInternalHost("10.999.1.1"));
    EXPECT_TRUE(isInternalHost("10.0.0.1.example"));
    EXPECT_TRUE(isInternalHost("+10.0.0.1"));
    EXPECT_TRUE(isInternalHost("10..0.0.1"));
    EXPECT_FALSE(isInternalHost("+-10.0.0.1"));
    EXPECT_FALSE(isInternalHost("10.0.0.1.5"));
    EXPECT_FALSE(isInternalHost("10.0.99999999999999999999.1"));
}

TEST(HostRules, find_one_root_domain_in_the_last_two_labels) {
    EXPECT_TRUE(sameRootDomain("mail.example.com", "www.example.com"));
    EXPECT_TRUE(sameRootDomain("example.com", "a.b.example.com"));
    EXPECT_TRUE(sameRootDomain("first.co.uk", "second.co.uk"));
    EXPECT_FALSE(sameRootDomain("example.com", "example.org"));
    EXPECT_FALSE(sameRootDomain("Example.com", "example.com"));
}

TEST(HostRules, find_no_root_domain_in_a_single_label) {
    EXPECT_FALSE(sameRootDomain("localhost", "localhost"));
    EXPECT_FALSE(sameRootDomain("", ""));
    EXPECT_TRUE(sameRootDomain(".com", "x..com"));
}

}  // namespace wrapio
