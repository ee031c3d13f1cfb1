// Goal: no text brings the translator down, and none gets a second statement or a changed value past it.
// The input is a statement; its first line, as a value, is also put into a statement of the rules.
#include "fuzz/fuzz.h"
#include "platform/db/clsConexion.h"
#include "platform/db/literal.h"
#include "platform/db/literal_value.h"
#include "platform/db/statement_cache.h"
#include "platform/db/translator.h"

#include <optional>

namespace quorvel::fuzz {
namespace {

std::optional<std::vector<Token>> cortada(std::string_view sql) {
    try {
        return tokenize(sql);
    } catch (const ErrorSesion&) {
        return std::nullopt;
    }
}

/// What an engine gets: its own words, so "?" and "$1" are in it, but one statement and all texts closed.
void exigir_una_sentencia(const Translation& t) {
    const char* p = t.text.data();
    const char* const end = p + t.text.size();
    const char* start = p;
    for (Tok kind; (kind = lexer::next(start, p, end)) != Tok::end;) {
        exigir(kind != Tok::bad, "the translation can be read", t.text);
        exigir(kind != Tok::op || *start != ';', "the translation is one statement", t.text);
    }
}

void traducir(std::string_view sql, const std::vector<Token>* tokens, std::size_t literales) {
    for (const Engine engine : {Engine::sqlite, Engine::postgres}) {
        try {
            const Translation t = translate(sql, engine);
            exigir(tokens != nullptr, "what is translated can be cut", sql);
            exigir_una_sentencia(t);
            for (const std::size_t n : t.params) exigir(n < literales, "parameters are literals", sql);
        } catch (const ErrorSesion&) { // refused, which is fine
        }
    }
}

/// The statement with other values of the same kinds is the same for the cache, and only with such.
void exigir_esqueleto(std::string_view sql, const Skeleton& s, const std::vector<Token>& tokens) {
    std::string otra;
    std::size_t desde = 0, n = 0;
    for (const Token& t : tokens) {
        if (!is_literal(t.kind)) continue;
        exigir(n < s.literals().size() && s.literal(n) == t.text && s.literals()[n].kind == t.kind,
               "scan and cut see the same literals", sql);
        const LiteralSpan& l = s.literals()[n++];
        otra += sql.substr(desde, l.offset - desde);
        otra += t.kind == Tok::integer ? "7" : t.kind == Tok::text ? "'x;''--'" : t.text;
        desde = l.offset + l.length;
    }
    otra += sql.substr(desde);
    exigir(n == s.literals().size(), "scan and cut see as many literals", sql);
    Skeleton gemelo;
    exigir(gemelo.scan(otra) && gemelo.hash() == s.hash(), "values do not change the skeleton", sql);
}

void exigir_valor(std::string_view valor) {
    std::string limpio(valor);
    for (char& c : limpio)
        if (c == '\0') c = ' ';
    const std::string sql = "update ctcquorvel set concepto=" + sql_texto(valor) + ",nro=-1 where empresa=1";
    const auto tokens = cortada(sql);
    exigir(tokens && tokens->size() == 15, "a quoted value is one literal", sql);
    std::string leido;
    append_text((*tokens)[5].text, leido);
    exigir(leido == limpio, "a quoted value comes back", sql);
    for (const Engine engine : {Engine::sqlite, Engine::postgres}) {
        const Translation t = translate(sql, engine);
        exigir(t.params.size() == 3 && t.params[0] == 0, "a quoted value becomes a parameter", t.text);
    }
}

} // namespace
} // namespace quorvel::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quorvel;
    using namespace quorvel::fuzz;
    const std::string_view sql = texto(data, size);
    const auto tokens = cortada(sql);
    Skeleton s;
    const bool leida = s.scan(sql);
    if (tokens) {
        exigir(leida, "what can be cut can be scanned", sql);
        exigir_esqueleto(sql, s, *tokens);
    }
    traducir(sql, tokens ? &*tokens : nullptr, s.literals().size());
    try {
        for (const std::string& una : separar_sentencias(sql)) {
            Skeleton parte;
            exigir(parte.scan(una), "a script falls into statements", una);
        }
        exigir(leida, "a script is made of tokens", sql);
    } catch (const ErrorSesion&) {
        exigir(!leida, "a script of tokens is taken", sql);
    }
    std::string_view resto = sql;
    exigir_valor(primera_linea(resto));
    return 0;
}
