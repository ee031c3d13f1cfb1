#include "platform/db/tokenizer.h"

#include "platform/db/clsConexion.h"
#include "text/letras_utf8.h"

namespace quorvel {
namespace {

[[noreturn]] void refuse(const std::string& why, std::string_view sql) {
    throw ErrorSesion(why, std::string(sql));
}

/// Marks that an engine would read as its own parameters or escapes.
bool foreign(std::string_view op) {
    return op.find_first_of("?$@:\\`[]{}") != std::string_view::npos && op != "::";
}

bool names(Tok kind) { return kind == Tok::name || kind == Tok::quoted_name; }

/// A "." stands between names, or a name and "*": put together with digits it would become a number.
bool point_fits(const std::vector<Token>& before, Tok kind, std::string_view text) {
    const bool behind = !before.empty() && before.back().kind == Tok::op && before.back().text == ".";
    if (behind && !names(kind) && text != "*") return false;
    return kind != Tok::op || text != "." || (!before.empty() && names(before.back().kind));
}

} // namespace

std::vector<Token> tokenize(std::string_view sql) {
    std::vector<Token> tokens;
    const char* p = sql.data();
    const char* const end = p + sql.size();
    const char* start = p;
    std::size_t literals = 0;
    bool ended = false;
    while (true) {
        const Tok kind = lexer::next(start, p, end);
        if (kind == Tok::end) break;
        if (kind == Tok::bad)
            refuse("Sentencia mal escrita cerca de: " +
                       primeros(std::string_view(start, static_cast<std::size_t>(end - start)), 40),
                   sql);
        std::string text(start, p);
        if (kind == Tok::op && text == ";") {
            ended = true;
            continue;
        }
        if (ended) refuse("Una sola sentencia por llamada", sql);
        if ((kind == Tok::op && foreign(text)) || !point_fits(tokens, kind, text))
            refuse("Signo no permitido: " + text, sql);
        if (kind == Tok::name) text = minusculas(normalizar(text));
        const bool literal = is_literal(kind);
        tokens.push_back({kind, std::move(text), literal ? literals++ : 0});
    }
    if (tokens.empty()) refuse("Sentencia vacía", sql);
    return tokens;
}

std::vector<std::string> separar_sentencias(std::string_view guion) {
    std::vector<std::string> sentencias;
    const char* p = guion.data();
    const char* const end = p + guion.size();
    const char* start = p;
    const char* desde = nullptr;
    const char* hasta = p;
    while (true) {
        const Tok kind = lexer::next(start, p, end);
        if (kind == Tok::bad)
            refuse("Guion mal escrito", std::string_view(start, static_cast<std::size_t>(end - start)));
        const bool corte = kind == Tok::end || (kind == Tok::op && *start == ';');
        if (!corte) {
            if (desde == nullptr) desde = start;
            hasta = p;
        } else if (desde != nullptr) {
            sentencias.emplace_back(desde, hasta);
            desde = nullptr;
        }
        if (kind == Tok::end) return sentencias;
    }
}

} // namespace quorvel
