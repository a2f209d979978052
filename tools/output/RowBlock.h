#pragma once

#include <cstddef>
#include <ostream>
#include <string>

/// Rows on their way to a stream, many at once: a call of the stream takes as long as making a row.
/// What has been added is written at the end, too, when that is an exception.
class RowBlock {
public:
    explicit RowBlock(std::ostream& stream) : m_stream(stream) {}
    ~RowBlock() { m_stream << m_text; }
    RowBlock(const RowBlock&) = delete;
    RowBlock& operator=(const RowBlock&) = delete;

    /// @return what a row is added to.
    std::string& text() { return m_text; }

    void endRow()
    {
        constexpr std::size_t ENOUGH = 32768;
        if (m_text.size() >= ENOUGH) {
            m_stream << m_text;
            m_text.clear();
        }
    }

private:
    std::ostream& m_stream;
    std::string m_text;
};
