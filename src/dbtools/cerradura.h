#pragma once
#include "dbtools/filas_empresa.h"

namespace quorvel::dbtools {

/// Closes the rows of one company of a database for changes, whoever tries and with whatever program, by
/// triggers of the database. They stay until they are taken away, also when this process ends.
class Cerradura {
public:
    Cerradura(Base& base, int empresa) : base_(base), empresa_(std::to_string(empresa)) {}
    /// Within a transaction of the caller's. Waits for changes that are under way.
    void cerrar(const std::vector<TablaMovida>& tablas);
    void abrir(const std::vector<TablaMovida>& tablas);

private:
    Base& base_;
    std::string empresa_;
};

} // namespace quorvel::dbtools
