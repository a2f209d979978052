#pragma once

#include <sqlite3.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <type_traits>

/// Lets the objects of a class live in SQLite's memory. SQLite's own code may be between these and
/// whoever called the library, and no exception may pass through it: where there is no memory,
/// `new` is null.
struct InSqliteMemory {
    static void* operator new(std::size_t size) noexcept
    {
        return sqlite3_realloc64(nullptr, size);
    }
    static void operator delete(void* memory) noexcept { sqlite3_free(memory); }
};

struct SqliteFree {
    void operator()(char* text) const noexcept { sqlite3_free(text); }
};

/// A text that SQLite has made, or null where it had no memory for it.
using SqliteText = std::unique_ptr<char, SqliteFree>;

/// A list of plain values in SQLite's memory.
template <class T>
class SqliteList {
    static_assert(std::is_trivially_copyable<T>::value, "moved byte by byte");

public:
    SqliteList() = default;
    ~SqliteList() { sqlite3_free(m_values); }
    SqliteList(const SqliteList&) = delete;
    SqliteList& operator=(const SqliteList&) = delete;

    /// @return whether there was memory for them; without it the list stays as it is.
    bool append(const T* values, std::size_t count) noexcept
    {
        if (m_count + count > m_room) {
            const std::size_t room = 2 * (m_count + count);
            void* const moved = sqlite3_realloc64(m_values, room * sizeof(T));
            if (moved == nullptr) {
                return false;
            }
            m_values = static_cast<T*>(moved);
            m_room = room;
        }
        std::copy(values, values + count, end());
        m_count += count;
        return true;
    }
    void removeLast() noexcept { --m_count; }
    void clear() noexcept { m_count = 0; }

    T* begin() const noexcept { return m_values; }
    T* end() const noexcept { return m_values + m_count; }
    T& last() const noexcept { return m_values[m_count - 1]; }
    std::size_t size() const noexcept { return m_count; }

private:
    T* m_values = nullptr;
    std::size_t m_count = 0;
    std::size_t m_room = 0;
};
