#include "Attack.h"
#include "support/DatabaseMaker.h"

#include <cstdint>

namespace {

constexpr std::uint32_t PAGE = 512;

/// A database of two tables in pages of 512 bytes, the pages behind the first to be made by hand.
class Pages {
public:
    explicit Pages(const std::string& file) : m_file(file)
    {
        runSql(file,
               "PRAGMA page_size=512; CREATE TABLE descriptions(name); CREATE TABLE "
               "fault_type_definition(alias);");
        runSql(file, "PRAGMA writable_schema=ON; UPDATE sqlite_master SET rootpage=2");
        m_bytes = contents(file).substr(0, PAGE);
    }

    /// @return the number of a new page; the first is the root of both tables.
    std::uint32_t add(const std::string& page)
    {
        m_bytes += page + std::string(PAGE - page.size(), '\0');
        return count();
    }

    std::uint32_t count() const { return static_cast<std::uint32_t>(m_bytes.size() / PAGE); }

    void finish()
    {
        m_bytes.replace(28, 4, number(count()));
        setContents(m_file, m_bytes);
    }

    static std::string number(std::uint32_t value, int bytes = 4)
    {
        std::string text;
        for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8) {
            text += static_cast<char>(value >> shift & 0xFF);
        }
        return text;
    }

    static std::string varint(std::uint32_t value)
    {
        std::string text(1, static_cast<char>(value & 0x7F));
        for (value >>= 7; value != 0; value >>= 7) {
            text.insert(text.begin(), static_cast<char>((value & 0x7F) | 0x80));
        }
        return text;
    }

    /// A page of a table: `kind` 13 with rows, 5 with children.
    static std::string table(int kind, const std::vector<std::string>& cells,
                             std::uint32_t lastChild = 0)
    {
        std::string page(PAGE, '\0');
        std::size_t top = PAGE;
        std::string pointers;
        for (const std::string& cell : cells) {
            top -= cell.size();
            page.replace(top, cell.size(), cell);
            pointers += number(static_cast<std::uint32_t>(top), 2);
        }
        const std::string header = number(static_cast<std::uint32_t>(kind), 1) + number(0, 2) +
                                   number(static_cast<std::uint32_t>(cells.size()), 2) +
                                   number(static_cast<std::uint32_t>(top), 2) + number(0, 1) +
                                   (kind == 5 ? number(lastChild) : "") + pointers;
        page.replace(0, header.size(), header);
        return page;
    }

private:
    std::string m_file;
    std::string m_bytes;
};

/// A row of one text that goes on in other pages.
std::string longRow(std::uint32_t id, std::uint32_t length, std::uint32_t overflowPage)
{
    const std::string type = Pages::varint(length * 2 + 13);
    const std::string record = Pages::varint(static_cast<std::uint32_t>(type.size()) + 1) + type;
    const auto payload = static_cast<std::uint32_t>(record.size()) + length;
    // What stands in the page itself, by SQLite's file format.
    const std::uint32_t least = (PAGE - 12) * 32 / 255 - 23;
    const std::uint32_t localLength = least + (payload - least) % (PAGE - 4);
    const std::uint32_t here = localLength <= PAGE - 35 ? localLength : least;
    return Pages::varint(payload) + Pages::varint(id) + record +
           std::string(here - record.size(), 'x') + Pages::number(overflowPage);
}

/// A tree in which each page has one page as each of its children.
void makeTree(const std::string& file, int height)
{
    Pages pages(file);
    const auto childOf = [&](std::uint32_t page) {
        std::vector<std::string> cells;
        for (std::uint32_t i = 0; i < 60; ++i) {
            cells.push_back(Pages::number(page + 1) + Pages::varint(i));
        }
        return Pages::table(5, cells, page + 1);
    };
    for (int level = 0; level < height; ++level) {
        pages.add(childOf(pages.count() + 1));
    }
    std::vector<std::string> rows;
    for (std::uint32_t i = 0; i < 40; ++i) {
        rows.push_back(Pages::varint(3) + Pages::varint(i) + "\x02\x0f" + "x");
    }
    pages.add(Pages::table(13, rows));
    pages.finish();
}

/// Rows whose long texts lie in the same pages.
void makeSharedOverflow(const std::string& file, int chain, bool isLoop)
{
    Pages pages(file);
    // So little is missing to full pages that the least of each row lies in the table's own.
    const auto length = static_cast<std::uint32_t>(chain) * (PAGE - 4) - 20;
    std::vector<std::string> rows;
    for (std::uint32_t i = 0; i < 8; ++i) {
        rows.push_back(longRow(i, length, 4));
    }
    std::vector<std::string> children;
    for (std::uint32_t i = 0; i < 60; ++i) {
        children.push_back(Pages::number(3) + Pages::varint(i));
    }
    pages.add(Pages::table(5, children, 3));
    pages.add(Pages::table(13, rows));
    for (int i = 0; i < chain; ++i) {
        const std::uint32_t next = isLoop ? 4 : i + 1 < chain ? pages.count() + 2 : 0;
        pages.add(Pages::number(next) + std::string(PAGE - 4, 'y'));
    }
    pages.finish();
}

}  // namespace

Attacks pageAttacks()
{
    return {
        {"tree of one leaf", {1, 2, 4, 18, 30}, makeTree},
        {"tree that is its own child",
         {1},
         [](const std::string& file, int) {
             Pages pages(file);
             pages.add(Pages::table(5, {Pages::number(2) + Pages::varint(1)}, 2));
             pages.finish();
         }},
        {"texts that share their pages",
         {10, 1000, 20000},
         [](const std::string& file, int n) { makeSharedOverflow(file, n, false); }},
        {"texts in a loop of pages",
         {10, 1000, 20000},
         [](const std::string& file, int n) { makeSharedOverflow(file, n, true); }},
        {"text longer than the file",
         {1},
         [](const std::string& file, int) {
             Pages pages(file);
             pages.add(Pages::table(13, {longRow(1, 15000000, 3)}));
             pages.add(Pages::number(3) + std::string(PAGE - 4, 'y'));
             pages.finish();
         }},
    };
}
