#include "platform/db/translator.h"

#include "platform/db/clsConexion.h"
#include "platform/db/literal_value.h"
#include "platform/db/token_view.h"
#include "platform/db/vocabulary.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace quorvel {
namespace {

enum class Clause { none, select, from, where, set, values, group, order, call };

/// One pass over the tokens, writing the engine's text as it goes.
class Translator : private TokenView {
public:
    Translator(std::vector<Token> tokens, std::string_view sql, Engine engine)
        : TokenView(std::move(tokens)), sql_(sql), engine_(engine) {}

    Translation run() {
        classify();
        close_parentheses(sql_);
        out_at_.assign(tokens_.size() + 1, 0);
        group(0, tokens_.size(), Clause::none);
        result_.text = std::move(out_);
        return std::move(result_);
    }

private:
    // --- preparation
    void classify() {
        const std::string& first = tokens_[0].text;
        using Kind = Translation::Kind;
        if (first == "select" || first == "with" || first == "values" || first == "explain")
            result_.kind = Kind::query;
        else if (first == "create" || first == "drop" || first == "alter")
            result_.kind = Kind::definition;
        for (const std::string_view own : {"begin", "commit", "rollback", "savepoint", "release", "end",
                                           "start", "abort", "attach", "detach", "pragma", "vacuum"})
            if (first == own) throw ErrorSesion("Sentencia no permitida: " + first, std::string(sql_));
        lifting_ = result_.kind != Kind::definition && !is(0, "with");
        if (first == "select") take_into();
        if (first == "drop" && is(1, "table") && is(2, "temporal") && tokens_.size() == 3) {
            const char* schema = engine_ == Engine::sqlite ? "temp" : "pg_temp";
            tokens_ = {name("drop"), name("table"),     name("if"), name("exists"),
                       name(schema), {Tok::op, ".", 0}, tokens_[2]};
        }
    }
    static Token name(const char* text) { return {Tok::name, text, 0}; }
    void take_into() {
        std::size_t depth = 0;
        for (std::size_t i = 1; i + 1 < tokens_.size(); ++i) {
            if (is(i, "(")) ++depth;
            if (is(i, ")") && depth > 0) --depth;
            if (depth > 0 || !is(i, "into") || !column_name(i + 1)) continue;
            result_.kind = Translation::Kind::select_into;
            result_.table = tokens_[i + 1].text;
            tokens_.erase(tokens_.begin() + static_cast<std::ptrdiff_t>(i),
                          tokens_.begin() + static_cast<std::ptrdiff_t>(i) + 2);
            lifting_ = false;
            return;
        }
    }
    // --- writing
    void put(std::string_view text) {
        if (!out_.empty() && out_.back() != '(' && !behind_point_ && text != ")" && text != "," &&
            text != "." && text != "(")
            out_ += ' ';
        else if (text == "(" && !out_.empty() && lexer::class_of(out_.back()) == lexer::other &&
                 out_.back() != '(')
            out_ += ' ';
        out_ += text;
        behind_point_ = text == ".";
    }
    [[nodiscard]] const char* text_equality() const {
        return engine_ == Engine::sqlite ? " collate rtrim" : "::bpchar";
    }

    /// Translates tokens [i, end), which stand in one pair of parentheses or are the whole statement.
    void group(std::size_t i, std::size_t end, Clause clause) {
        const bool select_list_only = clause == Clause::call;
        std::string limit;
        bool distinct = false;
        // a grouped expression is the same one in the select list and in the order
        const bool grouped = engine_ == Engine::postgres && has_group(i, end);
        const auto keyed = [&](Clause c) {
            return c == Clause::group || (c == Clause::select && (distinct || grouped)) ||
                   (c == Clause::order && grouped);
        };
        std::size_t item = i;
        while (i < end) {
            const Token& t = tokens_[i];
            out_at_[i] = out_.size();
            if (t.kind == Tok::name && vocabulary::keyword(t.text)) {
                const Clause before = clause;
                clause = clause_after(t.text, clause, select_list_only);
                if (before != clause && keyed(before)) close_chain(item, i);
                if (t.text == "as" && keyed(clause)) {
                    close_chain(item, i);
                    item = i + 1;
                }
                if (t.text == "and" || t.text == "or" || t.text == "not" || t.text == "by" ||
                    t.text == "distinct" || clause != before)
                    item = i + 1;
                if (t.text == "select") distinct = is(i + 1, "distinct");
                if (t.text == "distinct") distinct = true;
            } else if (is(i, ",")) {
                if (keyed(clause)) close_chain(item, i);
                item = i + 1;
            }
            if (compares(i)) {
                close_chain(item, i);
                item = i + 1;
            }
            const std::size_t next = step(i, end, clause, limit);
            if (i > 0 && is(i, "(")) text_suffix(i - 1, next, keyed(clause), end);
            i = next;
        }
        out_at_[end] = out_.size();
        if (keyed(clause)) close_chain(item, end);
        if (!limit.empty()) out_ += " limit " + limit;
    }
    [[nodiscard]] bool has_group(std::size_t i, std::size_t end) const {
        for (; i < end; i = is(i, "(") ? partner_[i] + 1 : i + 1)
            if (is(i, "group") && is(i + 1, "by")) return true;
        return false;
    }
    static Clause clause_after(const std::string& word, Clause now, bool call) {
        if (word == "select") return Clause::select;
        if (word == "from") return call && now == Clause::call ? now : Clause::from;
        if (word == "where" || word == "having" || word == "on") return Clause::where;
        if (word == "set") return Clause::set;
        if (word == "values") return Clause::values;
        if (word == "group") return Clause::group;
        if (word == "order" || word == "limit") return Clause::order;
        return now;
    }
    /// One token, or one construct that is written anew. @return the token behind it
    std::size_t step(std::size_t i, std::size_t end, Clause clause, std::string& limit) {
        const Token& t = tokens_[i];
        if (is_literal(t.kind)) return literal(i, end, clause);
        if (t.kind == Tok::name) {
            if (t.text == "select" && is(i + 1, "top") && i + 2 < end &&
                tokens_[i + 2].kind == Tok::integer) {
                put("select");
                limit = tokens_[i + 2].text;
                return i + 3;
            }
            if (is(i + 1, "(")) {
                if (const std::size_t n = whole_date(i, end)) return n;
                if (const std::size_t n = function(i)) return n;
            }
            if (result_.kind == Translation::Kind::definition)
                if (const std::size_t n = definition(i)) return n;
        }
        put(t.kind == Tok::op && t.text == "!=" ? "<>" : t.text);
        if (!is(i, "(")) return i + 1;
        group(i + 1, partner_[i], clause_within(i, clause));
        put(")");
        return partner_[i] + 1;
    }
    [[nodiscard]] Clause clause_within(std::size_t open, Clause clause) const {
        if (open == 0) return clause;
        if (is(open - 1, "values")) {
            // rows of a longer list share their columns' types, which a parameter would decide alone
            return is(partner_[open] + 1, ",") ? Clause::call : Clause::values;
        }
        const Token& before = tokens_[open - 1];
        if (before.kind == Tok::name) return vocabulary::opens_condition(before.text) ? clause : Clause::call;
        return clause == Clause::where && before.text == "(" ? clause : Clause::call;
    }

    // --- text equality of expressions
    /// A text function loses the column's way of comparing; give it back where it is compared.
    void text_suffix(std::size_t first, std::size_t next, bool keyed, std::size_t end) {
        if (tokens_[first].kind != Tok::name || !is(first + 1, "(")) return;
        const auto& functions = tokens_[first].text;
        if (!(engine_ == Engine::sqlite ? vocabulary::text_function(functions)
                                        : vocabulary::plain_text_function(functions)))
            return;
        const bool item = keyed && (next >= end || is(next, ",") || tokens_[next].kind == Tok::name);
        const bool right = first > 0 && comparison(first - 1) &&
                           !(first > 1 && bare_column(first - 2) && engine_ == Engine::sqlite);
        if (compares(next) || item || right) out_ += text_equality();
    }
    /// The same for a chain of "||" in tokens [first, last).
    void close_chain(std::size_t first, std::size_t last) {
        std::size_t start = last, depth = 0;
        bool chain = false;
        while (start > first) {
            const std::size_t i = start - 1;
            if (is(i, ")")) ++depth;
            if (is(i, "(")) {
                if (depth == 0) break;
                --depth;
            }
            if (depth == 0 && is(i, "||")) chain = true;
            start = i;
        }
        if (!chain) return;
        if (engine_ == Engine::postgres) {
            std::size_t at = out_at_[start];
            while (at < out_.size() && out_[at] == ' ') ++at;
            out_.insert(at, "(");
            out_ += ')';
        }
        out_ += text_equality();
    }

    // --- literals
    std::size_t literal(std::size_t i, std::size_t end, Clause clause) {
        const Token& t = tokens_[i];
        if (lifting_ && liftable(i, end, clause)) {
            result_.params.push_back(t.literal);
            put((engine_ == Engine::sqlite ? "?" : "$") + std::to_string(result_.params.size()));
            return i + 1;
        }
        write_literal(t);
        if (t.kind != Tok::text) return i + 1;
        const bool chained = i > 0 && is(i - 1, "||");
        const bool compared =
            (compares(i + 1) && !chained) || (i > 1 && comparison(i - 1) && tokens_[i - 2].kind == Tok::text);
        const bool kept = result_.kind == Translation::Kind::select_into && clause == Clause::select &&
                          engine_ == Engine::postgres && !is(i + 1, "||") && !chained;
        if (compared || kept) out_ += text_equality();
        return i + 1;
    }
    [[nodiscard]] bool liftable(std::size_t i, std::size_t end, Clause clause) const {
        std::size_t before = i - 1;
        if (i == 0) return false;
        const bool number = tokens_[i].kind == Tok::integer || tokens_[i].kind == Tok::decimal;
        if (number && (is(before, "-") || is(before, "+")) && before > 0 &&
            (comparison(before - 1) || is(before - 1, "(") || is(before - 1, ",")))
            --before;
        if (clause == Clause::values)
            return (is(before, "(") || is(before, ",")) && (i + 1 == end || is(i + 1, ","));
        if (clause != Clause::where && clause != Clause::set) return false;
        if (before == 0 || !ends_here(i + 1, end)) return false;
        if (comparison(before)) return bare_column(before - 1).has_value();
        // set debe3 = debe3 - 100
        if (clause != Clause::set || !number || !(is(before, "-") || is(before, "+")) ||
            !column_name(before - 1))
            return false;
        return before >= 2 && is(before - 2, "=");
    }
    void write_literal(const Token& t) {
        switch (t.kind) {
        case Tok::date: {
            std::string iso = engine_ == Engine::sqlite ? "'" : "date '";
            if (!append_iso(t.text, iso)) throw ErrorSesion("Fecha no válida: " + t.text, std::string(sql_));
            put(iso + "'");
            break;
        }
        case Tok::integer:
        case Tok::decimal: {
            std::string_view digits = t.text;
            while (digits.size() > 1 && digits[0] == '0' && lexer::class_of(digits[1]) == lexer::digit)
                digits.remove_prefix(1);
            put(digits);
            break;
        }
        default: put(t.text);
        }
    }

    // --- functions
    std::size_t function(std::size_t i) {
        const std::string& f = tokens_[i].text;
        const std::size_t open = i + 1, close = partner_[open];
        if (f == "year" || f == "month" || f == "day")
            date_part(f, open + 1, close);
        else if (f == "len")
            around(engine_ == Engine::sqlite ? "coalesce(length(rtrim(" : "coalesce(length(rtrim((", open + 1,
                   close, engine_ == Engine::sqlite ? ")), 0)" : ")::text)), 0)");
        else if (f == "val")
            leading_number(i, open + 1, close);
        else if (f == "cast") {
            const std::size_t as = cast_to_integer(open + 1, close);
            if (as == 0) return 0;
            leading_number(i, open + 1, as);
        } else if (const auto own = vocabulary::own_function(f))
            around(engine_ == Engine::sqlite ? own->sqlite : own->postgres, open + 1, close,
                   engine_ == Engine::sqlite ? own->sqlite_end : own->postgres_end);
        else
            return 0;
        return close + 1;
    }
    void around(const char* before, std::size_t first, std::size_t last, const char* after) {
        put(before);
        group(first, last, Clause::call);
        out_ += after;
    }
    void date_part(const std::string& part, std::size_t first, std::size_t last) {
        if (engine_ == Engine::sqlite) {
            const char* code = part == "year" ? "%Y" : part == "month" ? "%m" : "%d";
            return around((std::string("cast(strftime('") + code + "',").c_str(), first, last,
                          ") as integer)");
        }
        const bool text = last == first + 1 && tokens_[first].kind == Tok::text;
        around(("(extract(" + part + " from" + (text ? " date" : "")).c_str(), first, last, ")::integer)");
    }
    [[nodiscard]] std::size_t cast_to_integer(std::size_t first, std::size_t last) const {
        if (last < first + 3 || !is(last - 2, "as")) return 0;
        return is(last - 1, "integer") || is(last - 1, "int") || is(last - 1, "bigint") ? last - 2 : 0;
    }
    void leading_number(std::size_t i, std::size_t first, std::size_t last) {
        // an index holds the bare number; max() and min() pass over a null as over a 0
        const bool aggregate = i >= 2 && is(i - 1, "(") && (is(i - 2, "max") || is(i - 2, "min")) &&
                               partner_[i - 1] == partner_[i + 1] + 1;
        const bool indexed = result_.kind == Translation::Kind::definition;
        const bool bare = aggregate || indexed;
        if (engine_ == Engine::sqlite)
            return around(bare ? "cast(" : "coalesce(cast(", first, last,
                          bare ? " as integer)" : " as integer), 0)");
        around(bare ? "(substring((" : "coalesce((substring((", first, last,
               bare ? ")::text from '^ *[-+]?[0-9]{1,18}'))::bigint"
                    : ")::text from '^ *[-+]?[0-9]{1,18}'))::bigint, 0)");
    }
    /// year(x)=A and month(x)=B and day(x)=C. @return the token behind it, 0 when something else stands here
    std::size_t whole_date(std::size_t i, std::size_t end) {
        if (tokens_[i].text != "year") return 0;
        const std::size_t length = partner_[i + 1] - i + 1; // year ( x )
        const std::size_t stride = length + 3;              // = A and
        if (i + 2 * stride + length + 2 > end) return 0;
        const char* const parts[] = {"year", "month", "day"};
        int numbers[3] = {};
        for (std::size_t k = 0; k < 3; ++k) {
            const std::size_t at = i + k * stride;
            if (!is(at, parts[k]) || !is(at + length, "=") || tokens_[at + length + 1].kind != Tok::integer)
                return 0;
            if (k < 2 && !is(at + length + 2, "and")) return 0;
            for (std::size_t j = 1; j < length; ++j)
                if (tokens_[at + j].text != tokens_[i + j].text) return 0;
            if (tokens_[at + length + 1].text.size() > 4) return 0;
            numbers[k] = std::stoi(tokens_[at + length + 1].text);
        }
        const std::size_t past = i + 2 * stride + length + 2;
        if (!ends_here(past, end) || (i > 0 && tokens_[i - 1].kind != Tok::name && !is(i - 1, "("))) return 0;
        for (std::size_t j = i + 2; j < i + length - 1; ++j)
            if (!column_name(j) && !is(j, ".")) return 0;
        const Fecha f{std::chrono::year{numbers[0]}, std::chrono::month{static_cast<unsigned>(numbers[1])},
                      std::chrono::day{static_cast<unsigned>(numbers[2])}};
        if (!f.ok() || numbers[0] == 0) {
            put("1 = 0");
            return past;
        }
        for (std::size_t j = i + 2; j < i + length - 1; ++j) put(tokens_[j].text);
        put("=");
        write_literal({Tok::date, '#' + fecha_mdy(f) + '#', 0});
        return past;
    }

    // --- create table
    /// @return the token behind a rewritten piece of a table's definition, 0 when there is nothing to rewrite
    std::size_t definition(std::size_t i) {
        const std::string& word = tokens_[i].text;
        if (!is(0, "create") || i < 2) return 0;
        if (word == "text" && i > 0 && column_name(i - 1)) {
            const std::size_t past = is(i + 1, "(") ? partner_[i + 1] + 1 : i + 1;
            if (engine_ == Engine::postgres)
                put("bpchar");
            else
                put(is(past, "collate") ? "text" : "text collate rtrim");
            return past;
        }
        if (word == "double" && engine_ == Engine::postgres && !is(i + 1, "precision")) {
            put("double precision");
            return i + 1;
        }
        // an index's name is the schema's there, not the table's
        if (word == "constraint" && engine_ == Engine::postgres && is(i + 2, "primary")) return i + 2;
        return 0;
    }

    std::vector<std::size_t> out_at_;
    std::string_view sql_;
    Engine engine_;
    bool lifting_ = false;
    std::string out_;
    bool behind_point_ = false; ///< of a qualified name; a number may end with one as well
    Translation result_;
};

} // namespace

Translation translate(std::string_view sql, Engine engine) {
    return Translator(tokenize(sql), sql, engine).run();
}

} // namespace quorvel
