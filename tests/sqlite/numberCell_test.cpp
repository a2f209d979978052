// A number cell of plain digits is read without a stream: here every result is held against a
// stream's.

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <locale>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <typeinfo>

#include "support/CoutCapture.h"
#include "support/GlobalLocale.h"
#include "zav/sqlTblUtil.h"

namespace {

/// Decodes texts as cells of type T and holds each result and, in the end, all that was reported
/// against what a stream reads from the same text.
template <class T>
class Comparison {
public:
    void decode(const std::string& text)
    {
        T expected = m_untouched;
        const bool readable = readFromStream(text, expected);
        if (!readable) {
            m_expectedLines += "[ERROR] SQL3::printError() casting value \"" + text +
                               "\", typeid=" + typeid(T).name() + "\n";
        }
        T actual = m_untouched;
        std::string cellText = text;
        char* cell = cellText.data();
        const int result = sqlTblUtil::setValueFromSqlResult(&cell, &actual);
        EXPECT_TRUE(result == (readable ? 0 : -1) && actual == expected)
            << "for \"" << text << "\", typeid=" << typeid(T).name() << ": result " << result
            << ", value " << +actual << ", expected " << +expected;
    }

    ~Comparison() { EXPECT_TRUE(m_cout.text() == m_expectedLines); }

private:
    bool readFromStream(const std::string& text, T& number)
    {
        m_stream.clear();
        m_stream.str(text);
        T read = 0;
        if (!(m_stream >> read)) {
            return false;
        }
        number = read;
        return true;
    }

    const T m_untouched = 77;
    std::istringstream m_stream;
    std::string m_expectedLines;
    CoutCapture m_cout;
};

template <class T>
void decodeAll16BitNumbers()
{
    Comparison<T> comparison;
    for (unsigned number = 0; number <= 65535; ++number) {
        comparison.decode(std::to_string(number));
    }
}

template <class T>
void decodeLimits()
{
    Comparison<T> comparison;
    for (const unsigned long long limit : {65535ULL, 4294967295ULL, 18446744073709551615ULL}) {
        const std::string text = std::to_string(limit);
        for (const std::string zeros : {"", "0", "00000000000000000000"}) {
            comparison.decode(zeros + text);
            comparison.decode(zeros + std::to_string(limit / 10));
            comparison.decode(zeros + std::to_string(limit - 1));
            comparison.decode(zeros + text.substr(0, text.size() - 1) + "6");  // one more
        }
        comparison.decode(std::string(text.size() - 1, '9'));
        comparison.decode(std::string(text.size(), '9'));
        comparison.decode(text + "0");
        comparison.decode("-" + text);
    }
}

template <class T>
void decodeShortTexts()
{
    constexpr int LAST = std::numeric_limits<unsigned char>::max();
    Comparison<T> comparison;
    comparison.decode("");
    for (int first = 1; first <= LAST; ++first) {
        std::string text(1, static_cast<char>(first));
        comparison.decode(text);
        text.push_back(' ');
        for (int second = 1; second <= LAST; ++second) {
            text.back() = static_cast<char>(second);
            comparison.decode(text);
        }
    }
}

/// Texts of up to 21 characters, in which a character that is no digit stands now and then.
template <class T>
void decodeRandomTexts(int count)
{
    static const std::string characters =
        "01234567890123456789012345678901234567890123456789 +-,.xe\t";
    std::mt19937 random(20);  // the same texts in each run
    std::uniform_int_distribution<std::size_t> length(0, 21);
    std::uniform_int_distribution<std::size_t> character(0, characters.size() - 1);
    Comparison<T> comparison;
    for (int i = 0; i < count; ++i) {
        std::string text(length(random), ' ');
        for (char& next : text) {
            next = characters[character(random)];
        }
        comparison.decode(text);
    }
}

constexpr int RANDOM_TEXTS = 333'334;  // a million for the three widths

template <class T>
class NumberCell : public ::testing::Test {
};

using Widths = ::testing::Types<unsigned short, unsigned int, unsigned long long>;
TYPED_TEST_SUITE(NumberCell, Widths, );

TYPED_TEST(NumberCell, All16BitNumbersAreReadLikeFromAStream)
{
    decodeAll16BitNumbers<TypeParam>();
}

TYPED_TEST(NumberCell, LimitsOfEachWidthAreReadLikeFromAStream)
{
    decodeLimits<TypeParam>();
}

TYPED_TEST(NumberCell, ShortTextsAreReadLikeFromAStream)
{
    decodeShortTexts<TypeParam>();
}

TYPED_TEST(NumberCell, RandomTextsAreReadLikeFromAStream)
{
    decodeRandomTexts<TypeParam>(RANDOM_TEXTS);
}

TYPED_TEST(NumberCell, AGlobalLocaleThatGroupsDigitsCountsLikeForAStream)
{
    const GlobalLocale global(groupingLocale());
    decodeAll16BitNumbers<TypeParam>();
    decodeLimits<TypeParam>();
    decodeRandomTexts<TypeParam>(RANDOM_TEXTS / 10);
    Comparison<TypeParam> comparison;
    for (const char* text : {"1.234", "12.34", "1.23", ".1", "1.", "1..234", "12.345.678"}) {
        comparison.decode(text);
    }
}

TYPED_TEST(NumberCell, StreamThatBreaksCountsLikeForAStream)
{
    class Broken : public std::num_get<char> {
        iter_type do_get(iter_type /*in*/, iter_type /*end*/, std::ios_base& /*format*/,
                         std::ios_base::iostate& /*error*/, TypeParam& /*number*/) const override
        {
            throw std::runtime_error("broken");  // the stream is left bad, but has not failed
        }
    };
    const GlobalLocale global(std::locale(std::locale::classic(), new Broken));
    Comparison<TypeParam> comparison;
    comparison.decode(" 7");
}

/// Types that the library has no column for, but an application's own code may read cells into.
template <class T>
class OtherNumberCell : public ::testing::Test {
};

using OtherTypes = ::testing::Types<bool, char, signed char, unsigned char, short, int, long,
                                    unsigned long, long long, float, double>;
TYPED_TEST_SUITE(OtherNumberCell, OtherTypes, );

TYPED_TEST(OtherNumberCell, IsReadLikeFromAStream)
{
    Comparison<TypeParam> comparison;
    for (const char* text : {"0", "1", "2", "7", "42", "-42", "042", "127", "32767", "32768", "1.5",
                             "16777217", "2147483648", "9223372036854775808", "1e9", "x", ""}) {
        comparison.decode(text);
    }
}

/// A number of an application's own, which only a stream can read.
struct Celsius {
    // NOLINTNEXTLINE(google-explicit-constructor): a number is first set to 0
    Celsius(int whole) : degrees(whole) {}
    int degrees;
};

std::istream& operator>>(std::istream& stream, Celsius& temperature)
{
    return stream >> temperature.degrees;
}

TEST(OtherCell, OfATypeWithAStreamOperatorIsReadWithIt)
{
    std::string text = "42";
    char* cell = text.data();
    Celsius temperature = 0;
    EXPECT_EQ(sqlTblUtil::setValueFromSqlResult(&cell, &temperature), 0);
    EXPECT_EQ(temperature.degrees, 42);
}

}  // namespace
