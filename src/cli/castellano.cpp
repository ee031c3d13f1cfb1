#include "cli/castellano.h"

#include <CLI/CLI.hpp>
#include <regex>

namespace quorvel::cli {

namespace {

constexpr std::pair<const char*, const char*> ROTULOS[] = {
    {"Usage", "Uso"},         {"OPTIONS", "OPCIONES"},    {"SUBCOMMAND", "ORDEN"},
    {"SUBCOMMANDS", "ORDEN"}, {"Positionals", "Valores"}, {"REQUIRED", "(necesario)"}};

/// The help flag of a command is in the group "Options" before anybody can name it otherwise.
class Ayuda final : public CLI::Formatter {
public:
    [[nodiscard]] std::string make_group(std::string grupo, bool posicionales,
                                         std::vector<const CLI::Option*> opciones) const override {
        return Formatter::make_group(grupo == "Options" ? "Opciones" : grupo, posicionales,
                                     std::move(opciones));
    }
};

std::string en_castellano(const CLI::App*, const CLI::Error& e) {
    static const std::pair<std::regex, const char*> FRASES[] = {
        {std::regex("^A subcommand is required$"), "Falta la orden"},
        {std::regex("^(.*) is required$"), "Falta $1"},
        {std::regex("^The following arguments? w.* not expected: "), "No se entiende: "},
        {std::regex(" not in \\{(.*)\\}$"), " no es ninguno de: $1"},
        {std::regex("^Could not convert: (.*) = (.*)$"), "$1 debe ser un número: $2"},
        {std::regex("^(.*): 1 required .* missing$"), "Falta el valor de $1"}};
    std::string texto = e.what();
    for (const auto& [ingles, frase] : FRASES) texto = std::regex_replace(texto, ingles, frase);
    return texto + "\nCon --help se ven las opciones.\n";
}

} // namespace

void hablar_castellano(CLI::App& ordenes) {
    ordenes.group("Órdenes");
    ordenes.set_help_flag("-h,--help", "Muestra esta ayuda");
    const auto ayuda = std::make_shared<Ayuda>();
    for (const auto& [ingles, rotulo] : ROTULOS) ayuda->label(ingles, rotulo);
    ordenes.formatter(ayuda);
    ordenes.failure_message(en_castellano);
}

} // namespace quorvel::cli
