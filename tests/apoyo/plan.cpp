#include "apoyo/plan.h"

#include "platform/db/translator.h"

namespace quorvel::apoyo {
namespace {

/// The parameters' values in their order, cut out of the statement.
std::string argumentos(const Translation& t, const std::string& sql) {
    std::vector<std::string> literales;
    for (const Token& token : tokenize(sql))
        if (is_literal(token.kind))
            literales.push_back(token.kind == Tok::date
                                    ? "'" + token.text.substr(7, 4) + "-" + token.text.substr(1, 2) + "-" +
                                          token.text.substr(4, 2) + "'"
                                    : token.text);
    std::string lista;
    for (const std::size_t n : t.params) lista += (lista.empty() ? "(" : ",") + literales.at(n);
    return lista.empty() ? "" : lista + ")";
}

} // namespace

std::string plan(dbtools::Base& base, const std::string& sql) {
    const bool sqlite = base.motor() == "sqlite";
    const Translation t = translate(sql, sqlite ? Engine::sqlite : Engine::postgres);
    if (!sqlite) base.ejecutar("prepare caso as " + t.text);
    const auto filas =
        base.consultar(sqlite ? "explain query plan " + t.text : "explain execute caso" + argumentos(t, sql));
    if (!sqlite) base.ejecutar("deallocate caso");
    std::string texto;
    for (const auto& fila : filas) texto += fila.back() + "\n";
    return texto;
}

} // namespace quorvel::apoyo
