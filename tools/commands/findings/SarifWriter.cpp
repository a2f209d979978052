#include "SarifWriter.h"

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "findingText.h"
#include "output/formats.h"
#include "text/formatted.h"

namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t RESULTS_DEPTH = 3;

Json rules()
{
    auto list = Json::array();
    for (const KindInfo& info : allKinds()) {
        Json rule;
        rule["id"] = info.name;
        rule["shortDescription"]["text"] = info.help;
        rule["defaultConfiguration"]["level"] = nameOf(info.severity);
        list.push_back(rule);
    }
    return list;
}

Json tool()
{
    Json driver;
    driver["name"] = "zav";
    driver["version"] = ZAV_VERSION;
    driver["rules"] = rules();
    Json described;
    described["driver"] = driver;
    return described;
}

bool isPlain(char character)
{
    const std::string_view plain =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
    return plain.find(character) != std::string_view::npos;
}

/// @return the path as a URI: relative as it is, or of the scheme "file".
std::string uriOf(const std::string& path)
{
    std::string uri = path.rfind('/', 0) == 0 ? "file://" : "";
    for (const char character : path) {
        uri += isPlain(character) ? std::string(1, character)
                                  : formatted("%{:02X}", static_cast<unsigned char>(character));
    }
    return uri;
}

std::vector<std::string> eachOnce(const std::vector<std::string>& files)
{
    std::vector<std::string> unique;
    for (const std::string& file : files) {
        if (std::find(unique.begin(), unique.end(), file) == unique.end()) {
            unique.push_back(file);
        }
    }
    return unique;
}

Json artifacts(const std::vector<std::string>& files)
{
    auto list = Json::array();
    for (const std::string& file : files) {
        Json artifact;
        artifact["location"]["uri"] = uriOf(file);
        list.push_back(artifact);
    }
    return list;
}

/// FNV-1a: the same on every machine and in every release.
std::uint64_t hash(const std::string& text)
{
    std::uint64_t sum = 0xCBF29CE484222325;
    for (const char character : text) {
        sum = (sum ^ static_cast<unsigned char>(character)) * 0x100000001B3;
    }
    return sum;
}

/// Stays as it is while other findings come and go, and while the file lies elsewhere. A value
/// tells findings apart that are about no stored cell, such as the languages that a fault type
/// lacks.
std::string fingerprint(const std::string& file, const Finding& finding)
{
    const std::string base = std::filesystem::path(file).filename().string();
    const bool isOfCell = finding.delivered.has_value();
    const std::string value = finding.value && !isOfCell ? finding.value->bytes : "";
    std::string identity;
    for (const std::string& part : {base, std::string(infoOf(finding.kind).name), finding.table,
                                    finding.row.label, finding.column, value}) {
        identity += part + '\0';
    }
    return formatted("{:016x}", hash(identity));
}

std::string logicalName(const Finding& finding)
{
    std::string name = finding.table;
    for (const std::string& part : {finding.row.label, finding.column}) {
        name += part.empty() ? "" : "/" + part;
    }
    return name;
}

}  // namespace

SarifWriter::SarifWriter(Output& output, const std::vector<std::string>& files)
    : m_output(output), m_files(eachOnce(files)), m_results(output, RESULTS_DEPTH)
{
}

void SarifWriter::begin()
{
    m_output.printText(formatted(R"({{
  "$schema": "https://json.schemastore.org/sarif-2.1.0.json",
  "version": "2.1.0",
  "runs": [
    {{
      "tool": {},
      "artifacts": {},
      "columnKind": "unicodeCodePoints",
      "results": )",
                                 jsonText(tool(), RESULTS_DEPTH),
                                 jsonText(artifacts(m_files), RESULTS_DEPTH)));
}

void SarifWriter::beginFile(const std::string& file)
{
    m_file = file;
}

void SarifWriter::add(const Finding& finding)
{
    constexpr int FIRST_LINE = 1;  // a database has no lines, and some readers insist on one
    const KindInfo& info = infoOf(finding.kind);
    Json result;
    result["ruleId"] = info.name;
    result["ruleIndex"] = static_cast<std::size_t>(info.kind);
    result["level"] = nameOf(info.severity);
    result["message"]["text"] = messageOf(finding);
    Json location;
    location["physicalLocation"]["artifactLocation"]["uri"] = uriOf(m_file);
    location["physicalLocation"]["artifactLocation"]["index"] =
        std::find(m_files.begin(), m_files.end(), m_file) - m_files.begin();
    location["physicalLocation"]["region"]["startLine"] = FIRST_LINE;
    if (!finding.table.empty()) {
        location["logicalLocations"] = {{{"fullyQualifiedName", logicalName(finding)}}};
    }
    result["locations"] = Json::array({location});
    result["partialFingerprints"]["zavFinding/v1"] = fingerprint(m_file, finding);
    m_results.add(result);
}

void SarifWriter::end()
{
    m_results.end();
    m_output.printText("\n    }\n  ]\n}\n");
}
