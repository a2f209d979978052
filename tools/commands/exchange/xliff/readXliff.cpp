#include "readXliff.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <fstream>
#include <optional>
#include <pugixml.hpp>
#include <string_view>

#include "checkXml.h"
#include "database/DatabaseErrors.h"
#include "text/formatted.h"
#include "text/shortened.h"
#include "xliffNames.h"

namespace {

/// Where the lines of a text begin.
class Lines {
public:
    explicit Lines(std::string_view text)
    {
        for (std::size_t end = text.find('\n'); end != std::string_view::npos;
             end = text.find('\n', end + 1)) {
            m_ends.push_back(end);
        }
    }

    std::size_t lineAt(std::size_t offset) const
    {
        const auto end = std::lower_bound(m_ends.begin(), m_ends.end(), offset);
        return static_cast<std::size_t>(end - m_ends.begin()) + 1;
    }

private:
    std::vector<std::size_t> m_ends;
};

/// @return the name without the prefix that a tool may have given it.
std::string_view nameOf(const pugi::xml_node& node)
{
    const std::string_view name = node.name();
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

pugi::xml_node childOf(const pugi::xml_node& node, std::string_view name)
{
    return node.find_child([&](const pugi::xml_node& child) { return nameOf(child) == name; });
}

/// Takes a number that ends a text, and what stands before it, off the text.
std::optional<std::uint16_t> takeNumber(std::string_view& text, std::string_view before)
{
    const std::size_t start = text.rfind(before);
    if (start == std::string_view::npos) {
        return std::nullopt;
    }
    std::uint16_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [read, error] = std::from_chars(text.data() + start + before.size(), end, number);
    if (error != std::errc() || read != end) {
        return std::nullopt;
    }
    text = text.substr(0, start);
    return number;
}

class Reading {
public:
    Reading(std::string content, const std::string& name, Mistakes& mistakes)
        : m_content(std::move(content)), m_lines(m_content), m_name(name), m_mistakes(mistakes)
    {
    }

    std::vector<Translation> run()
    {
        try {
            checkXml(m_content);
        } catch (const UnfitXml& unfit) {
            add(m_lines.lineAt(unfit.offset()), "", unfit.what());
            return {};
        }
        pugi::xml_document document;
        const pugi::xml_parse_result result = document.load_buffer_inplace(
            m_content.data(), m_content.size(), pugi::parse_default | pugi::parse_ws_pcdata,
            pugi::encoding_utf8);
        if (!result) {
            add(m_lines.lineAt(static_cast<std::size_t>(result.offset)), "", result.description());
            return {};
        }
        readRoot(document.document_element());
        return std::move(m_translations);
    }

private:
    void add(std::size_t line, const std::string& unit, const std::string& what)
    {
        m_mistakes.push_back({m_name, line, unit, what});
    }

    std::size_t lineOf(const pugi::xml_node& node) const
    {
        return m_lines.lineAt(static_cast<std::size_t>(node.offset_debug()));
    }

    void readRoot(const pugi::xml_node& root)
    {
        const std::string_view version = root.attribute("version").value();
        // 1.1, which some tools write of 1.2, has the same elements.
        if (nameOf(root) != xliff::ROOT || (version != xliff::VERSION && version != "1.1")) {
            add(lineOf(root), "", "is no XLIFF 1.2");
            return;
        }
        for (const pugi::xml_node& file : root.children()) {
            if (nameOf(file) == xliff::DOCUMENT) {
                readFile(file);
            }
        }
    }

    void readFile(const pugi::xml_node& file)
    {
        std::string_view original = file.attribute(xliff::ORIGINAL).value();
        const auto to = takeNumber(original, xliff::TO);
        const auto from = takeNumber(original, xliff::FROM);
        if (!from || !to) {
            add(lineOf(file), xliff::ORIGINAL,
                "names no languages; it must end like \";from=1;to=3\", as zav translate has "
                "written it");
            return;
        }
        m_translations.push_back({std::string(original),
                                  {*from, file.attribute(xliff::SOURCE_LANGUAGE).value()},
                                  {*to, file.attribute(xliff::TARGET_LANGUAGE).value()},
                                  {}});
        readUnits(childOf(file, xliff::BODY));
    }

    /// Those in groups as well; checkXml() has bounded how deep they are.
    // NOLINTNEXTLINE(misc-no-recursion)
    void readUnits(const pugi::xml_node& parent)
    {
        for (const pugi::xml_node& child : parent.children()) {
            if (nameOf(child) == xliff::UNIT) {
                readUnit(child);
            } else if (nameOf(child) == "group") {
                readUnits(child);
            }
        }
    }

    void readUnit(const pugi::xml_node& node)
    {
        const pugi::xml_node target = childOf(node, xliff::TARGET);
        TranslationUnit unit;
        unit.id = node.attribute(xliff::ID).value();
        unit.source = textOf(childOf(node, xliff::SOURCE), unit.id);
        unit.target = textOf(target, unit.id);
        unit.state = target.attribute(xliff::STATE).value();
        unit.line = lineOf(node);
        m_translations.back().units.push_back(std::move(unit));
    }

    std::string textOf(const pugi::xml_node& node, const std::string& unit)
    {
        std::string text;
        for (const pugi::xml_node& child : node.children()) {
            if (child.type() == pugi::node_element) {
                add(lineOf(child), unit,
                    formatted("the {} holds an element, {}; only text is taken", nameOf(node),
                              shortened(child.name())));
            }
            text += child.value();
        }
        return text;
    }

    std::string m_content;
    const Lines m_lines;
    const std::string& m_name;
    Mistakes& m_mistakes;
    std::vector<Translation> m_translations;
};

/// @return no more than is read, and a byte.
std::string contentOf(const std::string& file)
{
    std::ifstream stream(file, std::ios::binary);
    std::string content;
    constexpr std::size_t PIECE = std::size_t{1} << 20U;
    while (stream && content.size() <= MOST_XML_BYTES) {
        const std::size_t before = content.size();
        content.resize(before + PIECE);
        stream.read(&content[before], PIECE);
        content.resize(before + static_cast<std::size_t>(stream.gcount()));
    }
    if (!stream.eof() && !stream) {
        throw UnreadableFile(formatted("{}: cannot be read: {}", file, std::strerror(errno)));
    }
    return content;
}

}  // namespace

std::vector<Translation> readXliff(std::string content, const std::string& name, Mistakes& mistakes)
{
    if (content.size() > MOST_XML_BYTES) {
        mistakes.push_back(
            {name, 0, "", formatted("is larger than {} MiB", MOST_XML_BYTES >> 20U)});
        return {};
    }
    return Reading(std::move(content), name, mistakes).run();
}

std::vector<Translation> readXliffFile(const std::string& file, Mistakes& mistakes)
{
    return readXliff(contentOf(file), file, mistakes);
}
