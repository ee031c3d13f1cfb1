#pragma once
#include "apoyo/pantalla.h"

namespace quorvel::fallas {

/// One thing a person does at the screen that changes the database, ready to be disturbed.
struct Trabajo {
    const char* nombre;
    void (*preparar)(pruebas::Pantalla&); ///< up to the last press
    void (*hacer)(pruebas::Pantalla&);
    const char* dicho; ///< what the screen says when it is done
    int etapas = 1;    ///< how often the stored data change on the way
};
extern const std::vector<Trabajo> TRABAJOS;
inline void PrintTo(const Trabajo& t, std::ostream* os) { *os << t.nombre; }

/// What is written into the boxes of a dialog, by control.
using Cajas = std::vector<std::pair<const char*, std::string>>;
/// Fills the dialog that a menu opens, accepts it and leaves it.
void llenar_dialogo(pruebas::Pantalla& p, const char* menu, const Cajas& cajas,
                    const std::vector<std::string>& filas = {});

/// The last notice since the last call, questions apart.
[[nodiscard]] std::string ultimo_aviso(pruebas::Pantalla& p);

/// A database and its user's folder, with the attached files.
struct Escena {
    std::string conexion, carpeta;
};
/// A fresh copy of the small company with what the jobs work on, entered through the screen.
[[nodiscard]] Escena escena(apoyo::Motor motor);
/// Makes the same in a database and a folder that are empty.
void sembrar(const Escena& e);
/// A copy of the scene's database with a copy of its files.
[[nodiscard]] Escena con_archivos(const Escena& modelo, const std::string& conexion);
/// Everything stored, but for the edit locks.
[[nodiscard]] std::string huella(clsConexion& db);
/// What the checker says, as one text; empty when all is well.
[[nodiscard]] std::string revision(const Escena& e);
/// All that the screen holds of its voucher.
[[nodiscard]] std::string en_pantalla(const pruebas::Pantalla& p);

} // namespace quorvel::fallas
