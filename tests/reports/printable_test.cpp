// What comes from outside, as it is shown.
#include <gtest/gtest.h>

#include "terminal/output.h"
#include "text/printable.h"

TEST(Printable, ShowsWhatWouldForgeALineTurnItOrCommandTheTerminal) {
    const std::pair<std::string, std::string> rows[] = {
        {"plain ä € \u2027\u202f \ufffd 𝄞 \U0010fffd",
         "plain ä € \u2027\u202f \ufffd 𝄞 \U0010fffd"},
        {"a\nb\033[2J\x7f", "a\\x0ab\\x1b[2J\\x7f"},
        {"\xc2\x80\xc2\x9b\xc2\xa0", "\\x80\\x9b\xc2\xa0"},
        {std::string("\0", 1), "\\x00"},
        {"\u061c\u200d\u200e\u200f", "\\u061c\u200d\\u200e\\u200f"},
        {"\u2028\u2029\u202a\u202e", "\\u2028\\u2029\\u202a\\u202e"},
        {"\ufffe\uffff\U0010ffff", "\\ufffe\\uffff\\u10ffff"},
        {"\xc3(\xe2\x82", "\\xc3(\\xe2\\x82"},
        {"\xc1\xbf\xe0\x9f\xbf\xf0\x8f\xbf\xbf",
         "\\xc1\\xbf\\xe0\\x9f\\xbf\\xf0\\x8f\\xbf\\xbf"},  // overlong
        {"\xed\xa0\x80\xed\xbf\xbf\xed\x9f\xbf", "\\xed\\xa0\\x80\\xed\\xbf\\xbf\xed\x9f\xbf"},
        {"\xf4\x90\x80\x80\xf5\x80\x80\x80", "\\xf4\\x90\\x80\\x80\\xf5\\x80\\x80\\x80"},
    };
    for (const auto& [text, shown] : rows) {
        EXPECT_EQ(printable(text), shown);
    }
    EXPECT_EQ(complaint("a\nb"), "vrrp-valid: a\\x0ab\n");
}
