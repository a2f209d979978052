#pragma once

#include <locale>
#include <string>

/// Makes a locale the global C++ one while it lives.
class GlobalLocale {
public:
    explicit GlobalLocale(const std::locale& locale) : m_previous(std::locale::global(locale)) {}
    ~GlobalLocale() { std::locale::global(m_previous); }
    GlobalLocale(const GlobalLocale&) = delete;
    GlobalLocale& operator=(const GlobalLocale&) = delete;

private:
    const std::locale m_previous;
};

/// @return the classic locale, but for the punctuation of a country that writes a million as
///         1.000.000.
inline std::locale groupingLocale()
{
    class Grouping : public std::numpunct<char> {
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    return {std::locale::classic(), new Grouping};
}
