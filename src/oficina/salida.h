#pragma once

namespace quorvel::oficina {

/// Exit codes of the program's commands.
enum Salida {
    BIEN = 0,
    RECHAZADO = 1, ///< what was looked at is not as it should be
    MAL_USO = 2,   ///< the command line itself
    SIN_DATOS = 3  ///< a database or a file that cannot be reached, read or written
};

} // namespace quorvel::oficina
