#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

/// Writes SQL by a small grammar, each choice in which is a byte of the input. An input that has
/// ended chooses what is simplest, so that each statement comes to an end.
///
/// Everything that can be selected from has the columns `x` and `y`: what is written mostly
/// compiles.
class Grammar {
public:
    Grammar(const std::uint8_t* bytes, std::size_t size) : m_at(bytes), m_end(bytes + size) {}

    bool hasEnded() const { return m_at == m_end; }

    /// @return 0 to `choices` - 1; 0 at the end of the input.
    int choose(int choices);

    /// @return a number of times, small more often than large.
    int chooseCount();

    /// A query for a view.
    ///
    /// @param views  how many there are below, called `v0` and so on.
    std::string select(int views);

    /// The columns of a table, some of them generated.
    std::string columns();

    /// A column's values, or a condition on them.
    std::string expression();

    /// What makes a virtual table, but for its name.
    std::string module(int views);

private:
    std::string expression(const std::string& row, int depth);
    std::string call(const std::string& row, int depth);
    std::string simpleSelect(int depth);
    std::string compound(int depth);
    std::string source(int depth);
    std::string name();
    std::string repeated(const std::string& text, const std::string& separator);

    const std::uint8_t* m_at;
    const std::uint8_t* m_end;
    int m_views = 0;
    int m_ctes = 0;
};
