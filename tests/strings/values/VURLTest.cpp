#include "foundation/strings/values/VURL.h"

#include "foundation/strings/VString.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

using namespace VFoundation;

TEST(VURL, IsSplitStrictly) {
    // scheme|host|port|path|query
    char const* const valid[][2] = {
        {"http://user:pw@example.org:8080/a/b?q=1?#top", "http|example.org|8080|/a/b|q=1?"},
        {"HTTP://[::1]:80", "HTTP|[::1]|80||"},
        {"x://[1:2:3:4:5:6:7:8]/", "x|[1:2:3:4:5:6:7:8]|-1|/|"},
        {"x://[1::3:4:5:6:7:8]", "x|[1::3:4:5:6:7:8]|-1||"},
        {"x://[1:2:3:4:5:6:1.2.3.4]", "x|[1:2:3:4:5:6:1.2.3.4]|-1||"},
        {"x://[::ffff:192.0.2.255]/", "x|[::ffff:192.0.2.255]|-1|/|"},
        {"x://[v1.a:b]", "x|[v1.a:b]|-1||"},
        {"file:///etc/hosts", "file||-1|/etc/hosts|"},
        {"mailto:a@b.c", "mailto||-1|a@b.c|"},
        {"a+-.1:%41%fF", "a+-.1||-1|%41%fF|"},
        {"http://h:", "http|h|-1||"},
        {"http://h?a/b", "http|h|-1||a/b"},
        {"http://h:65535#a?b", "http|h|65535||"}};
    for (auto const& [text, parts] : valid) {
        VURL const url(text);
        EXPECT_TRUE(url.IsValid()) << text;
        VString split;
        split.Format("%s|%s|%li|%s|%s", url.Scheme().CString(), url.Host().CString(), url.Port(),
                     url.Path().CString(), url.Query().CString());
        EXPECT_STREQ(split.CString(), parts) << text;
    }
    std::istringstream invalid(
        R"( no-scheme /a 1a:b :b a_b:c http://h/%4 http://h/%zz http://h:65536/ http://h:1x
        http://[::1 http://[::1]x http://[1::2::3] http://[:1] http://[1:2:3:4:5:6:7] http://[1:2:3:4:5:6:7:8:9]
        http://[1::2:3:4:5:6:7:8] http://[::01.2.3.4]
        http://[::1.2.3.256] http://[::1.2.3] http://[1.2.3.4::] http://[12345::] http://[v.a] http://[v1.]
        http://a@b@c/ http://a[b/ http://h/\ http://h/#a#b http://h/?" http://h/é )");
    for (std::string text; invalid >> text;) {
        VURL const url(text.c_str());
        EXPECT_FALSE(url.IsValid()) << text;
        EXPECT_STREQ(url.Scheme().CString(), "") << text;
        EXPECT_EQ(url.Port(), -1) << text;
    }
    for (char const* const text : {"", "a b:c", "http://h/\n"}) {
        EXPECT_FALSE(VURL(text).IsValid()) << text;
    }
}

} // namespace
