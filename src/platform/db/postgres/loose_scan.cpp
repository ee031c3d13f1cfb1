#include "platform/db/postgres/loose_scan.h"

#include "text/letras_utf8.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <vector>

namespace quorvel {
namespace {

constexpr std::string_view TEXT =
    "with recursive par as ((select %B, %A from %T where %A is not null and %B is not null order by %B, %A "
    "limit 1) union all select otro.%B, otro.%A from par cross join lateral (select %B, %A from %T where "
    "(%B, %A) > (par.%B, par.%A) and %A is not null order by %B, %A limit 1) otro) (select %A, %B from par "
    "where %W) union all (select distinct %A, %B from %T where %B is null and %W) limit %N";
constexpr std::string_view INDEXED =
    "select 1 from pg_index i, pg_attribute b, pg_attribute a where i.indrelid=to_regclass('%T') and "
    "i.indisvalid and i.indpred is null and b.attrelid=i.indrelid and b.attname='%B' and "
    "i.indkey[0]=b.attnum and i.indoption[0]=0 and a.attrelid=i.indrelid and a.attname='%A' and "
    "i.indkey[1]=a.attnum and i.indoption[1]=0";
constexpr std::array<std::string_view, 11> CONDITIONS{"and", "is", "not", "null", "=", "<>",
                                                      "<",   ">",  "<=",  ">=",   "1"};

using Words = std::vector<std::string>;

Words words_of(std::string_view text) {
    std::istringstream all{std::string(text)};
    Words words;
    for (std::string word; all >> word;) words.push_back(word);
    return words;
}

bool is_name(const std::string& word) {
    return std::ranges::all_of(
        word, [](char c) { return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_'; });
}

/// Whether the words stand at that place.
bool at(const Words& words, std::size_t place, std::initializer_list<std::string_view> expected) {
    return place + expected.size() <= words.size() &&
           std::equal(expected.begin(), expected.end(), words.begin() + static_cast<std::ptrdiff_t>(place));
}

std::string filled(std::string_view pattern,
                   std::initializer_list<std::pair<const char*, std::string>> parts) {
    std::string text(pattern);
    for (const auto& [mark, part] : parts) text = reemplazar(text, mark, part);
    return text;
}

} // namespace

std::optional<LooseScan> loose_scan(std::string_view text) {
    constexpr std::size_t A = 2, B = 3, TABLE = 5, FIRST = 7, BEHIND = 5; // "order by b limit n"
    Words words = words_of(text);
    if (words.size() < FIRST + BEHIND || !at(words, 0, {"select", "distinct"}) || !words[A].ends_with(','))
        return std::nullopt;
    words[A].pop_back();
    const std::size_t order = words.size() - BEHIND;
    const std::string &a = words[A], &b = words[B], &table = words[TABLE];
    if (!at(words, B + 1, {"from", table, "where"}) || !at(words, order, {"order", "by", b, "limit"}) ||
        !is_name(a) || !is_name(b) || !is_name(table))
        return std::nullopt;
    bool pairs_are_whole = false;
    std::string where;
    for (std::size_t i = FIRST; i < order; ++i) {
        const std::string& word = words[i];
        if (word != a && word != b && word.front() != '$' && std::ranges::count(CONDITIONS, word) == 0)
            return std::nullopt;
        pairs_are_whole = pairs_are_whole || at(words, i, {a, "<>"});
        where += (where.empty() ? "" : " ") + word;
    }
    if (!pairs_are_whole) return std::nullopt;
    return LooseScan{filled(TEXT, {{"%A", a}, {"%B", b}, {"%T", table}, {"%W", where}, {"%N", words.back()}}),
                     filled(INDEXED, {{"%A", a}, {"%B", b}, {"%T", table}})};
}

} // namespace quorvel
