#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel {

/// Finds names by the beginnings of their words, case and accents ignored. Words lie by their first two
/// letters, so that a search reads only what begins alike, however many names there are.
class IndicePalabras {
public:
    struct Entrada {
        std::string codigo, nombre;
    };
    /// In the order in which results are wanted; the code counts as a word, and so do further words.
    void agregar(std::string_view codigo, std::string_view nombre, std::string_view otras = {});
    /// Names that have, for each word of the text, a word beginning with it; those that begin with the whole
    /// text first. A text without a word of two letters finds nothing.
    [[nodiscard]] std::vector<Entrada> buscar(std::string_view texto, std::size_t maximo) const;
    [[nodiscard]] std::size_t cantidad() const { return comienzos_.size(); }

private:
    static constexpr std::size_t GRUPOS = std::size_t{1} << 16;
    void ordenar() const;
    [[nodiscard]] std::string_view plegada(std::size_t entrada) const;
    [[nodiscard]] Entrada original(std::size_t entrada) const;
    std::string plegado_;    ///< per entry a blank before each word, and a line end
    std::string originales_; ///< per entry code, tab, name
    std::vector<std::uint32_t> comienzos_, comienzos_originales_;
    /// Word starts with their entries, by group; made by the first search after an entry was added.
    struct Palabra {
        std::uint32_t lugar, entrada;
    };
    mutable std::vector<Palabra> palabras_;
    mutable std::vector<std::uint32_t> grupos_;
};

} // namespace quorvel
