#include "tavixskin/framework/string.h"

#include <gtest/gtest.h>

#include <mbctype.h>

#include <cstring>
#include <random>
#include <string>
#include <utility>

namespace {

TEST(String, IsEmptyFromNothingNullAndEmptyText) {
    const CString none;
    const CString null(static_cast<const char*>(nullptr));
    const CString empty("");
    for (const CString* s : {&none, &null, &empty}) {
        EXPECT_TRUE(s->IsEmpty());
        EXPECT_EQ(s->GetLength(), 0);
        ASSERT_NE(s->c_str(), nullptr);
        EXPECT_STREQ(*s, "");
        EXPECT_TRUE(*s == none);
    }
}

TEST(String, CopiesAreIndependent) {
    CString a("caption");
    CString b(a);
    a = "other";
    EXPECT_STREQ(b, "caption");
    EXPECT_STREQ(a, "other");
    b = a;
    EXPECT_STREQ(b, "other");
    EXPECT_NE(a.c_str(), b.c_str());
}

TEST(String, MovesTakeTheText) {
    CString a("caption");
    const char* text = a.c_str();
    CString b(std::move(a));
    EXPECT_EQ(b.c_str(), text);
    CString c("old");
    c = std::move(b);
    EXPECT_EQ(c.c_str(), text);
    EXPECT_EQ(c.GetLength(), 7);
}

TEST(String, CanBeAssignedToItself) {
    CString s("itself");
    CString& same = s;
    s = same;
    EXPECT_STREQ(s, "itself");
    EXPECT_EQ(s.GetLength(), 6);
}

TEST(String, CanBeAssignedAPartOfItself) {
    CString s("one two three");
    s = s.c_str() + 4;
    EXPECT_STREQ(s, "two three");
    EXPECT_EQ(s.GetLength(), 9);
    s = s.c_str();
    EXPECT_STREQ(s, "two three");
}

TEST(String, CanBeAppendedToItself) {
    CString s("ab");
    for (int i = 0; i < 5; ++i) s += s;
    EXPECT_EQ(s.GetLength(), 64);
    EXPECT_EQ(std::string(s.c_str(), 6), "ababab");
    EXPECT_EQ(s.c_str()[64], 0);
}

TEST(String, TakesNullAsEmptyInAssignments) {
    CString s("text");
    s = static_cast<const char*>(nullptr);
    EXPECT_TRUE(s.IsEmpty());
    EXPECT_STREQ(s, "");
}

TEST(String, TakesTheFirstCharactersWithTheirZeros) {
    const CString s("a\0bcd", 4);
    EXPECT_EQ(s.GetLength(), 4);
    EXPECT_EQ(s.GetAt(0), 'a');
    EXPECT_EQ(s.GetAt(1), 0);
    EXPECT_EQ(s.GetAt(2), 'b');
    EXPECT_EQ(s.GetAt(3), 'c');
    EXPECT_EQ(s.GetAt(4), 0);

    const CString copy(s);
    EXPECT_EQ(copy.GetLength(), 4);
    EXPECT_TRUE(copy == s);
    EXPECT_FALSE(s == CString("a\0bcx", 5));
    EXPECT_FALSE(s == CString("a\0bx", 4));
    EXPECT_STREQ((s + "!").c_str() + 2, "bc!");
}

TEST(String, EmptyLeavesNothing) {
    CString s("text");
    s.Empty();
    EXPECT_TRUE(s.IsEmpty());
    EXPECT_STREQ(s, "");
    CString never;
    never.Empty();
    EXPECT_STREQ(never, "");
}

TEST(String, JoinsTexts) {
    const CString a("C:\\skins\\");
    EXPECT_STREQ(a + "blue.skn", "C:\\skins\\blue.skn");
    EXPECT_STREQ(a, "C:\\skins\\");
    EXPECT_STREQ(CString() + "", "");
}

TEST(String, ComparesBytes) {
    EXPECT_TRUE(CString("Button") == "Button");
    EXPECT_FALSE(CString("Button") == "button");
    EXPECT_FALSE(CString("Button") == "Button ");
    EXPECT_TRUE(CString("Button") == CString("Button"));
    EXPECT_FALSE(CString("Button") == CString("Buttom"));
    EXPECT_TRUE(CString() == CString(""));
}

TEST(String, ComparesWithoutCase) {
    EXPECT_EQ(CString("ComboBoxEx32").CompareNoCase("COMBOBOXEX32"), 0);
    EXPECT_LT(CString("combo").CompareNoCase("COMBOBOX"), 0);
    EXPECT_GT(CString("List").CompareNoCase("combo"), 0);
    EXPECT_EQ(CString().CompareNoCase(""), 0);
}

// In a multi-byte code page the second byte of a character may be an ASCII letter; it has no case.
TEST(String, ComparesWholeCharactersOfAMultiByteCodePage) {
    const int former = _getmbcp();
    if (_setmbcp(932) != 0 || !_ismbblead(0x83)) {
        _setmbcp(former);
        GTEST_SKIP() << "the runtime knows no code page 932";
    }
    const int differentTrail = CString("\x83\x61").CompareNoCase("\x83\x41");
    const int sameTrail = CString("\x83\x61Z").CompareNoCase("\x83\x61z");
    _setmbcp(0);
    const int singleBytes = CString("\x83\x61").CompareNoCase("\x83\x41");
    _setmbcp(former);
    EXPECT_NE(differentTrail, 0);
    EXPECT_EQ(sameTrail, 0);
    EXPECT_EQ(singleBytes, 0);
}

TEST(String, GetBufferKeepsTheTextAndGivesRoom) {
    CString s("abc");
    char* buffer = s.GetBuffer(1000);
    EXPECT_STREQ(buffer, "abc");
    std::memset(buffer + 3, 'x', 997);
    s.ReleaseBuffer(1000);
    EXPECT_EQ(s.GetLength(), 1000);
    EXPECT_EQ(s.GetAt(999), 'x');
    EXPECT_EQ(std::strlen(s), 1000u);
}

TEST(String, ReleaseBufferFindsTheTerminator) {
    CString s;
    char* buffer = s.GetBuffer(255);
    std::strcpy(buffer, "Tavix_PaneK");
    s.ReleaseBuffer();
    EXPECT_EQ(s.GetLength(), 11);
    EXPECT_TRUE(s == "Tavix_PaneK");
}

TEST(String, GetBufferOfNothingIsTerminated) {
    CString s;
    EXPECT_STREQ(s.GetBuffer(0), "");
    s.ReleaseBuffer();
    EXPECT_TRUE(s.IsEmpty());
}

TEST(String, ReleaseBufferWithoutABufferChangesNothing) {
    CString s;
    s.ReleaseBuffer();
    EXPECT_TRUE(s.IsEmpty());
}

TEST(String, GetBufferSmallerThanTheTextKeepsIt) {
    CString s("a longer text");
    EXPECT_STREQ(s.GetBuffer(2), "a longer text");
    s.ReleaseBuffer(8);
    EXPECT_STREQ(s, "a longer");
}

// A model of the same text goes through the same random operations.
TEST(String, BehavesAsItsModel) {
    std::mt19937 random(20240229);
    CString text;
    std::string model;
    const auto below = [&random](unsigned limit) { return random() % limit; };
    for (int step = 0; step < 20000; ++step) {
        switch (below(7)) {
            case 0:
                text += "x", model += "x";
                break;
            case 1: {
                const std::string piece(below(40), static_cast<char>('a' + below(26)));
                text += piece.c_str(), model += piece;
                break;
            }
            case 2: {
                const auto from = below(static_cast<unsigned>(model.size()) + 1);
                text = text.c_str() + from;
                model = model.substr(from);
                break;
            }
            case 3: {
                CString copy(text);
                text = copy + "-";
                model += "-";
                break;
            }
            case 4: {
                char* buffer = text.GetBuffer(static_cast<int>(model.size()) + 3);
                std::memcpy(buffer + model.size(), "end", 4);
                text.ReleaseBuffer();
                model += "end";
                break;
            }
            case 5: {
                CString other(std::move(text));
                text = std::move(other);
                break;
            }
            default:
                if (model.size() > 300) text.Empty(), model.clear();
                break;
        }
        ASSERT_EQ(text.GetLength(), static_cast<int>(model.size())) << "step " << step;
        ASSERT_STREQ(text, model.c_str()) << "step " << step;
    }
}

}  // namespace
