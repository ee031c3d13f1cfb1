#pragma once
#include "dbtools/base.h"

namespace quorvel::dbtools {

/// The right to move companies of a database, which one program at a time has, until its end however it
/// comes.
class Turno {
public:
    /// @param conexion of `base`, normalised @throws std::runtime_error when another program has it
    Turno(Base& base, const std::string& conexion);
    ~Turno();
    Turno(const Turno&) = delete;
    Turno& operator=(const Turno&) = delete;

private:
    int archivo_ = -1;
};

} // namespace quorvel::dbtools
