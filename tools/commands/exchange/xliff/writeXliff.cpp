#include "writeXliff.h"

#include <pugixml.hpp>

#include "text/formatted.h"
#include "xliffNames.h"

namespace {

/// A carriage return that stands as it is would be read as a line end.
class StringWriter : public pugi::xml_writer {
public:
    void write(const void* data, std::size_t size) override
    {
        const char* const characters = static_cast<const char*>(data);
        for (std::size_t i = 0; i < size; ++i) {
            m_text += characters[i] == '\r' ? "&#13;" : std::string(1, characters[i]);
        }
    }

    std::string text() && { return std::move(m_text); }

private:
    std::string m_text;
};

void set(pugi::xml_node node, const char* attribute, const std::string& value)
{
    node.append_attribute(attribute).set_value(value.c_str());
}

pugi::xml_node addText(pugi::xml_node parent, const char* name, const std::string& text)
{
    pugi::xml_node node = parent.append_child(name);
    if (!text.empty()) {
        node.text().set(text.c_str());
    }
    return node;
}

void addNote(pugi::xml_node unit, const char* from, const std::string& text)
{
    if (!text.empty()) {
        set(addText(unit, "note", text), "from", from);
    }
}

void add(pugi::xml_node body, const TranslationUnit& unit)
{
    pugi::xml_node node = body.append_child(xliff::UNIT);
    set(node, xliff::ID, unit.id);
    set(node, "xml:space", "preserve");
    if (unit.state == TRANSLATED) {
        set(node, "approved", "yes");  // without, tools take it for a proposal
    }
    addText(node, xliff::SOURCE, unit.source);
    pugi::xml_node target = addText(node, xliff::TARGET, unit.target);
    if (!unit.state.empty()) {
        set(target, xliff::STATE, unit.state);
    }
    addNote(node, "alias", unit.alias);
    addNote(node, "comment", unit.comment);
}

}  // namespace

std::string xliffOf(const Translation& translation)
{
    pugi::xml_document document;
    pugi::xml_node declaration = document.append_child(pugi::node_declaration);
    set(declaration, "version", "1.0");
    set(declaration, "encoding", "UTF-8");
    pugi::xml_node root = document.append_child(xliff::ROOT);
    set(root, "version", xliff::VERSION);
    set(root, "xmlns", "urn:oasis:names:tc:xliff:document:1.2");
    pugi::xml_node file = root.append_child(xliff::DOCUMENT);
    set(file, xliff::ORIGINAL,
        formatted("{}{}{}{}{}", translation.original, xliff::FROM, translation.from.number,
                  xliff::TO, translation.to.number));
    set(file, xliff::SOURCE_LANGUAGE, translation.from.name);
    set(file, xliff::TARGET_LANGUAGE, translation.to.name);
    set(file, "datatype", "plaintext");
    pugi::xml_node body = file.append_child(xliff::BODY);
    for (const TranslationUnit& unit : translation.units) {
        add(body, unit);
    }
    StringWriter writer;
    document.save(writer, "  ", pugi::format_default, pugi::encoding_utf8);
    return std::move(writer).text();
}
