#pragma once
#include "dbtools/filas_empresa.h"
#include "dbtools/guion.h"

namespace quorvel::dbtools {

/// Rows that all companies of a database share and that a company uses: accounts, auxiliaries, kinds of
/// document, users, persons. Those that are missing where it goes are written there; the others stay as they
/// are there.
class Compartidos {
public:
    /// @param empresa its number in `de`
    Compartidos(Base& de, Base& a, int empresa);
    /// Codes that mean something else where the company goes, one sentence each. Nothing is written.
    [[nodiscard]] std::vector<std::string> choques();
    /// Writes what is missing, and finds the codes of users and persons, who are known by name and RUT.
    void llevar(Codigos& codigos);

private:
    [[nodiscard]] TablaMovida tabla(const std::string& nombre) const;
    [[nodiscard]] std::string con_empresa(const char* usados) const;
    std::map<std::string, std::string> personas(const std::string& nombre, const std::string& identidad,
                                                const char* usados);
    Base &de_, &a_;
    std::string empresa_;
    std::vector<Tabla> tablas_; ///< of the schema where the company comes from
};

} // namespace quorvel::dbtools
