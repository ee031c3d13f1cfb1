#include "text/indice_palabras.h"

#include "text/letras_utf8.h"

#include <algorithm>

namespace quorvel {

namespace {

std::size_t grupo(std::string_view plegado, std::size_t lugar) {
    const auto byte = [&](std::size_t i) -> std::size_t { return static_cast<unsigned char>(plegado[i]); };
    return byte(lugar) << 8 | byte(lugar + 1);
}

/// Appends each word of a text without capitals and accents, a blank before it.
void agregar_palabras(std::string& palabras, std::string_view plano) {
    bool dentro = false;
    for (const char c : plano) {
        const char minuscula = c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
        const bool letra = de_palabra(minuscula);
        if (letra && !dentro) palabras += ' ';
        if (letra) palabras += minuscula;
        dentro = letra;
    }
}

void agregar_texto(std::string& palabras, std::string_view texto) {
    const bool ascii =
        std::ranges::all_of(texto, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    ascii ? agregar_palabras(palabras, texto) : agregar_palabras(palabras, sin_acentos(texto));
}

/// They keep their blank: only the beginning of a word matches.
std::vector<std::string> separadas(const std::string& palabras) {
    std::vector<std::string> partes;
    for (const char c : palabras) {
        if (c == ' ') partes.emplace_back();
        partes.back() += c;
    }
    return partes;
}

std::string_view tramo(const std::string& todo, const std::vector<std::uint32_t>& comienzos, std::size_t i) {
    const std::size_t fin = i + 1 < comienzos.size() ? comienzos[i + 1] : todo.size();
    return std::string_view(todo).substr(comienzos[i], fin - comienzos[i]);
}

} // namespace

void IndicePalabras::agregar(std::string_view codigo, std::string_view nombre, std::string_view otras) {
    comienzos_.push_back(static_cast<std::uint32_t>(plegado_.size()));
    for (const std::string_view texto : {nombre, codigo, otras}) agregar_texto(plegado_, texto);
    plegado_ += '\n';
    comienzos_originales_.push_back(static_cast<std::uint32_t>(originales_.size()));
    ((originales_ += codigo) += '\t') += nombre;
    grupos_.clear();
}

/// Places of words counted per group first, then filled in.
void IndicePalabras::ordenar() const {
    if (!grupos_.empty()) return;
    grupos_.assign(GRUPOS + 1, 0);
    const auto cada_palabra = [this](auto&& hacer) {
        std::uint32_t entrada = 0;
        for (std::size_t i = 0; i + 2 < plegado_.size(); ++i) {
            if (plegado_[i] == '\n') ++entrada;
            if (plegado_[i] == ' ' && plegado_[i + 2] != ' ' && plegado_[i + 2] != '\n')
                hacer(static_cast<std::uint32_t>(i + 1), entrada);
        }
    };
    cada_palabra([this](std::uint32_t lugar, std::uint32_t) { ++grupos_[grupo(plegado_, lugar) + 1]; });
    for (std::size_t g = 0; g < GRUPOS; ++g) grupos_[g + 1] += grupos_[g];
    palabras_.resize(grupos_.back());
    std::vector<std::uint32_t> siguiente(grupos_.begin(), grupos_.end() - 1);
    cada_palabra([&](std::uint32_t lugar, std::uint32_t entrada) {
        palabras_[siguiente[grupo(plegado_, lugar)]++] = {lugar, entrada};
    });
}

std::string_view IndicePalabras::plegada(std::size_t entrada) const {
    return tramo(plegado_, comienzos_, entrada);
}

IndicePalabras::Entrada IndicePalabras::original(std::size_t entrada) const {
    const std::string_view texto = tramo(originales_, comienzos_originales_, entrada);
    const std::size_t tab = texto.find('\t');
    return {std::string(texto.substr(0, tab)), std::string(texto.substr(tab + 1))};
}

std::vector<IndicePalabras::Entrada> IndicePalabras::buscar(std::string_view texto,
                                                            std::size_t maximo) const {
    std::string entero;
    agregar_texto(entero, texto);
    const std::vector<std::string> pedidas = separadas(entero);
    const auto mas_larga = std::ranges::max_element(pedidas, {}, &std::string::size);
    if (mas_larga == pedidas.end() || mas_larga->size() < 3) return {};
    ordenar();
    const std::string clave = mas_larga->substr(1);
    std::vector<std::uint32_t> primeras, otras;
    std::uint32_t ultima = UINT32_MAX;
    const std::size_t g = grupo(clave, 0);
    for (std::size_t i = grupos_[g]; i < grupos_[g + 1] && primeras.size() < maximo; ++i) {
        const auto [lugar, entrada] = palabras_[i];
        if (entrada == ultima || plegado_.compare(lugar, clave.size(), clave) != 0) continue;
        const std::string_view propia = plegada(entrada);
        const auto tiene = [&](const std::string& p) { return propia.find(p) != std::string_view::npos; };
        if (!std::ranges::all_of(pedidas, tiene)) continue;
        ultima = entrada;
        if (propia.starts_with(entero))
            primeras.push_back(entrada);
        else if (otras.size() < maximo)
            otras.push_back(entrada);
    }
    primeras.insert(primeras.end(), otras.begin(), otras.end());
    if (primeras.size() > maximo) primeras.resize(maximo);
    std::vector<Entrada> halladas;
    for (const std::uint32_t e : primeras) halladas.push_back(original(e));
    return halladas;
}

} // namespace quorvel
