#include "platform/files/settings_file.h"

#include "text/letras_utf8.h"

#include <fstream>
#include <iterator>
#include <optional>
#include <vector>

namespace fs = std::filesystem;

namespace quorvel {
namespace {

std::string sin_bordes(std::string_view t) {
    const auto blanco = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
    while (!t.empty() && blanco(t.front())) t.remove_prefix(1);
    while (!t.empty() && blanco(t.back())) t.remove_suffix(1);
    return std::string(t);
}

constexpr std::string_view NAME = "nivo.ini";
constexpr std::string_view BOM = "\xEF\xBB\xBF";

/// Lines with their own ends, none of a missing file. @return nothing when the file cannot be read
std::optional<std::vector<std::string>> read_lines(const fs::path& path) {
    std::error_code ec;
    if (!fs::exists(path, ec) && !ec) return std::vector<std::string>();
    std::ifstream in(path, std::ios::binary);
    if (!in || !fs::is_regular_file(path, ec)) return std::nullopt;
    const std::string all{std::istreambuf_iterator<char>(in), {}};
    std::vector<std::string> lines;
    for (std::size_t from = 0; from < all.size();) {
        const std::size_t end = all.find('\n', from);
        const std::size_t next = end == std::string::npos ? all.size() : end + 1;
        lines.push_back(all.substr(from, next - from));
        from = next;
    }
    if (!lines.empty() && lines[0].starts_with(BOM)) {
        lines.insert(lines.begin(), std::string(BOM)); // a line of its own, so that it is kept
        lines[1].erase(0, BOM.size());
    }
    return lines;
}

std::optional<std::string> section_of(const std::string& line) {
    const std::string t = sin_bordes(line);
    const std::size_t close = t.find(']');
    if (t.empty() || t[0] != '[' || close == std::string::npos) return std::nullopt;
    return sin_bordes(std::string_view(t).substr(1, close - 1));
}

struct Place {
    std::optional<std::size_t> line;        ///< of the key
    std::optional<std::size_t> section_end; ///< behind the section's last line that is not empty
};

Place find(const std::vector<std::string>& lines, std::string_view section, std::string_view key) {
    Place place;
    bool inside = false;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (const auto s = section_of(lines[i])) {
            if (inside) break; // the first section of the name counts
            inside = igual_sin_caso(*s, section);
        }
        if (!inside) continue;
        const std::string t = sin_bordes(lines[i]);
        if (!t.empty()) place.section_end = i + 1;
        const std::size_t equals = t.find('=');
        if (t.empty() || t[0] == ';' || t[0] == '#' || equals == std::string::npos) continue;
        if (!igual_sin_caso(sin_bordes(std::string_view(t).substr(0, equals)), key)) continue;
        place.line = i;
        break;
    }
    return place;
}

/// What the file holds for a value: as it is, or in quotes where get() would take something off its ends.
std::string written(std::string_view value) {
    std::string clean = sin_controles(value); // a line end would begin another key
    const bool quoted = clean.size() >= 2 && clean.front() == '"' && clean.back() == '"';
    return quoted || sin_bordes(clean) != clean ? '"' + clean + '"' : clean;
}

bool replace_file(const fs::path& path, const std::vector<std::string>& lines) {
    fs::path fresh = path;
    fresh += ".nuevo";
    std::error_code ec;
    {
        std::ofstream out(fresh, std::ios::binary | std::ios::trunc);
        for (const std::string& line : lines) out << line;
        out.close();
        if (!out) {
            fs::remove(fresh, ec);
            return false;
        }
    }
    fs::rename(fresh, path, ec);
    if (!ec) return true;
    std::error_code ignored;
    fs::remove(fresh, ignored);
    return false;
}

} // namespace

SettingsFile::SettingsFile(const fs::path& folder) : path_(folder / NAME) {
    std::error_code ec;
    if (fs::exists(path_, ec)) return;
    fs::path found;
    for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec))
        if (igual_sin_caso(it->path().filename().string(), NAME) && (found.empty() || it->path() < found))
            found = it->path();
    if (!found.empty()) path_ = found;
}

std::string SettingsFile::get(std::string_view section, std::string_view key) const {
    const auto lines = read_lines(path_);
    if (!lines) return {};
    const Place place = find(*lines, section, key);
    if (!place.line) return {};
    const std::string& line = (*lines)[*place.line];
    std::string value = sin_bordes(std::string_view(line).substr(line.find('=') + 1));
    if (value.size() >= 2 && value.front() == '"' && value.back() == '"')
        value = value.substr(1, value.size() - 2);
    return value;
}

bool SettingsFile::set(std::string_view section, std::string_view key, std::string_view value) const {
    auto read = read_lines(path_);
    if (!read) return false; // it is not lost for what it could not tell
    std::vector<std::string>& lines = *read;
    const std::string eol = !lines.empty() && lines.back().ends_with("\r\n") ? "\r\n" : "\n";
    const std::string clean = written(value);
    const Place place = find(lines, section, key);
    if (place.line) {
        std::string& line = lines[*place.line];
        const std::string end = line.ends_with("\r\n") ? "\r\n" : line.ends_with('\n') ? "\n" : "";
        line = line.substr(0, line.find('=') + 1) + clean + end;
        return replace_file(path_, lines);
    }
    const std::string entry = std::string(key) + "=" + clean + eol;
    const std::size_t at = place.section_end.value_or(lines.size());
    const bool only_mark = at == 1 && lines[0] == BOM; // the first line goes behind it
    if (at > 0 && !lines[at - 1].ends_with('\n') && !only_mark) lines[at - 1] += eol;
    if (place.section_end)
        lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(at), entry);
    else
        lines.insert(lines.end(), {"[" + std::string(section) + "]" + eol, entry});
    return replace_file(path_, lines);
}

} // namespace quorvel
