#include "testing/SourceTexts.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <fstream>
#include <stdexcept>

#include <pugixml.hpp>

namespace zetaudiopluginhostui {

namespace {

constexpr std::string_view keyStart = "$$$/";

std::string ReadWhole(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string content(std::filesystem::file_size(path), '\0');
    if (!file.read(content.data(), static_cast<std::streamsize>(content.size())))
        throw std::runtime_error(path.string() + " cannot be read");
    return content;
}

/// Reads a literal that begins at `at`, behind its opening quotation mark. Returns the place behind the
/// closing one.
std::size_t ReadLiteral(std::string_view source, std::size_t at, std::string& literal)
{
    for (; at < source.size() && source[at] != '"'; ++at) {
        if (source[at] == '\\' && at + 1 < source.size()) {
            const char escaped = source[++at];
            literal += escaped == 'n' ? '\n' : escaped == 't' ? '\t' : escaped;
        } else {
            literal += source[at];
        }
    }
    return at + 1;
}

/// The place behind a comment or a character that begins at `at`, because either may hold a quotation mark.
/// Returns `at` when neither begins there.
std::size_t SkipCommentOrCharacter(std::string_view source, std::size_t at)
{
    // Nearly all characters end here: each test of the tables reads all sources, also with sanitizers.
    if (source[at] != '/' && source[at] != '\'')
        return at;
    const std::string_view rest = source.substr(at);
    const auto behind = [&](std::string_view end) {
        const std::size_t found = rest.find(end, 2);
        return found == std::string_view::npos ? source.size() : at + found + end.size();
    };
    if (rest.starts_with("//"))
        return behind("\n");
    if (rest.starts_with("/*"))
        return behind("*/");
    if (rest.starts_with("'\\"))
        return at + std::min(rest.size(), rest.find('\'', 3)) + 1;
    if (rest.size() > 2 && rest[0] == '\'' && rest[2] == '\'')
        return at + 3;
    return at;
}

bool IsOfTests(const std::filesystem::path& path)
{
    constexpr std::array<std::string_view, 3> folders{"testing", "tests", "testarchives"};
    const bool isInFolder = std::any_of(path.begin(), path.end(), [&](const std::filesystem::path& part) {
        return std::find(folders.begin(), folders.end(), part.string()) != folders.end();
    });
    const std::string stem = path.stem().string();
    return isInFolder || stem.ends_with("Test") || stem.find("Test_") != std::string::npos;
}

void Add(std::string_view text, const std::filesystem::path& path, SourceTexts& texts)
{
    if (!text.starts_with(keyStart) || text == keyStart)
        return;
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos)
        throw std::runtime_error(path.string() + ": " + std::string(text) + " has no text");
    texts[std::string(text.substr(0, equals))].emplace(text.substr(equals + 1));
}

/// In archives, a text stands in parentheses.
void AddArchiveTexts(const pugi::xml_node& node, const std::filesystem::path& path, SourceTexts& texts)
{
    const std::string_view text = node.value();
    if (text.starts_with('(') && text.ends_with(')'))
        Add(text.substr(1, text.size() - 2), path, texts);
    else
        Add(text, path, texts);
    for (const pugi::xml_node child : node.children())
        AddArchiveTexts(child, path, texts);
}

} // namespace

std::vector<std::string> StringLiterals(std::string_view source)
{
    std::vector<std::string> literals;
    bool isContinued = false;
    for (std::size_t at = 0; at < source.size();) {
        if (const std::size_t behind = SkipCommentOrCharacter(source, at); behind != at) {
            isContinued = isContinued && source[at] == '/';
            at = behind;
        } else if (source[at] == '"') {
            if (!isContinued)
                literals.emplace_back();
            at = ReadLiteral(source, at + 1, literals.back());
            isContinued = true;
        } else {
            const bool isPrefix = source[at] == 'L' && at + 1 < source.size() && source[at + 1] == '"';
            isContinued = isContinued && (isPrefix || std::isspace(static_cast<unsigned char>(source[at])));
            ++at;
        }
    }
    return literals;
}

SourceTexts CollectSourceTexts(const std::filesystem::path& folder)
{
    SourceTexts texts;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        const std::filesystem::path& path = entry.path();
        if (!entry.is_regular_file() || IsOfTests(path.lexically_relative(folder)))
            continue;
        if (path.extension() == ".cpp" || path.extension() == ".h") {
            for (const std::string& literal : StringLiterals(ReadWhole(path)))
                Add(literal, path, texts);
        } else if (path.extension() == ".xml") {
            pugi::xml_document archive;
            if (!archive.load_file(path.c_str()))
                throw std::runtime_error(path.string() + " is not XML");
            AddArchiveTexts(archive, path, texts);
        }
    }
    return texts;
}

} // namespace zetaudiopluginhostui
