// Goal: docs/mensajes.md quotes the program's messages as they are and leaves out none of the validation.
// Method: each quotation, cut where a value stands, must follow in this order in the texts of one source
// file.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <sstream>

namespace fs = std::filesystem;

namespace {

const fs::path ROOT = QUORVEL_SOURCE;
constexpr char BETWEEN = '\x1f'; // two texts of a source

std::string read(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// Blanks and line ends are one blank wherever they are.
std::string even(const std::string& text) {
    std::string evened;
    for (const char c : text) {
        const char blank = c == '\n' || c == '\r' ? ' ' : c;
        if (blank != ' ' || (!evened.empty() && evened.back() != ' ')) evened += blank;
    }
    while (evened.ends_with(' ')) evened.pop_back();
    return evened;
}

std::string unescaped(const std::string& literal) {
    std::string text;
    for (std::size_t i = 0; i < literal.size(); ++i) {
        if (literal[i] != '\\' || i + 1 == literal.size()) {
            text += literal[i];
            continue;
        }
        const char c = literal[++i];
        text += c == 'n' || c == 'r' || c == 't' ? ' ' : c;
    }
    return text;
}

/// The texts of a source file, those that stand side by side as one.
std::string texts_of(const std::string& source) {
    static const std::regex literal("\"((?:[^\"\\\\\\n]|\\\\.)*)\"(\\s*(?:\\\\\\n\\s*)?)");
    std::string texts;
    for (std::sregex_iterator i(source.begin(), source.end(), literal), end; i != end; ++i) {
        texts += unescaped((*i)[1]);
        const auto after = static_cast<std::size_t>(i->position() + i->length());
        if (after >= source.size() || source[after] != '"') texts += BETWEEN;
    }
    return even(texts);
}

std::map<std::string, std::string> sources() {
    std::map<std::string, std::string> found;
    for (const auto& e : fs::recursive_directory_iterator(ROOT / "src"))
        if (e.path().extension() == ".cpp" || e.path().extension() == ".h")
            found[fs::relative(e.path(), ROOT)] = texts_of(read(e.path()));
    return found;
}

std::vector<std::string> split(std::string text, const std::string& at) {
    std::vector<std::string> parts;
    for (std::size_t i; (i = text.find(at)) != std::string::npos; text.erase(0, i + at.size()))
        parts.push_back(text.substr(0, i));
    parts.push_back(text);
    return parts;
}

/// The quotations of the first column of every table.
std::vector<std::string> quotations() {
    std::vector<std::string> found;
    std::istringstream lines(read(ROOT / "docs/mensajes.md"));
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with("| ") || line.starts_with("| Mensaje |") || line.starts_with("| ---")) continue;
        const std::string cell = line.substr(2, line.find(" | ") - 2);
        for (const std::string& message : split(cell, "<br>")) found.push_back(message);
    }
    return found;
}

bool says(const std::string& texts, const std::string& message) {
    const auto parts = split(message, "…");
    return std::ranges::all_of(
        parts, [&](const std::string& p) { return texts.find(even(p)) != std::string::npos; });
}

} // namespace

TEST(Mensajes, EveryQuotedMessageIsInTheProgram) {
    const auto all = sources();
    const auto quoted = quotations();
    EXPECT_GT(quoted.size(), 200U);
    for (const std::string& message : quoted)
        EXPECT_TRUE(std::any_of(all.begin(), all.end(), [&](const auto& s) {
            return says(s.second, message);
        })) << message;
}

/// What the forms themselves say, up to where a value or a second line begins.
TEST(Mensajes, WhatTheScreenSaysIsExplained) {
    const std::string explained = even(read(ROOT / "docs/mensajes.md"));
    static const std::regex said(R"re((?:critico|exclamacion|informacion|pregunta)\("([^"\\]+))re");
    for (const auto& e : fs::recursive_directory_iterator(ROOT / "src/screen")) {
        const std::string source = e.is_regular_file() ? read(e.path()) : "";
        for (std::sregex_iterator i(source.begin(), source.end(), said), end; i != end; ++i)
            EXPECT_NE(explained.find(even((*i)[1])), std::string::npos) << e.path() << ": " << (*i)[1];
    }
}

TEST(Mensajes, TheValidationIsExplainedCompletely) {
    const std::string explained = even(read(ROOT / "docs/mensajes.md"));
    for (const auto& [file, texts] : sources()) {
        if (!file.starts_with("src/voucher/validar")) continue;
        for (const std::string& text : split(texts, std::string(1, BETWEEN))) {
            static const std::regex sentence("[A-Z][^ ]*[a-z][^ ]* .*");
            const bool message = std::regex_match(text, sentence);
            EXPECT_TRUE(!message || explained.find(even(text)) != std::string::npos) << file << ": " << text;
        }
    }
}
