#include "screen/detalle/detalle.h"
#include "screen/frmQuorvel.h"

namespace quorvel {

namespace {
struct Definicion {
    const char* titulo;
    int letras; ///< width in letters of the screen's font
    const char* patron;
    int alineacion;
    bool boton;
};
constexpr int ANCHO_LETRA = 9; // pixels of an "X" in the screen's font
constexpr Definicion DEFINICIONES[COLUMNAS] = {
    {"Sec", 4, "", 0, false},        {"Cuenta", 10, "", 0, true},      {"Auxiliar", 7, "", 0, true},
    {"Debe", 12, "#,##0", 1, false}, {"Haber", 12, "#,##0", 1, false}, {"Glosa", 29, "", 0, false},
    {"C. Costo", 7, "", 0, true},    {"Conciliado", 7, "", 0, false},  {"Doc.Pagado", 9, "", 0, false},
    {"Otro Imp.", 7, "", 0, true},   {"Tasa Imp.", 7, "", 0, false},
};
} // namespace

void construir_columnas(frmQuorvel& f) {
    f.grdDetalle.SetConnection(f.glbdb);
    f.grdDetalle.SetCols(COLUMNAS);
    for (int i = 0; i < COLUMNAS; ++i) {
        const Definicion& d = DEFINICIONES[i];
        f.grdDetalle.Columns(i) = {d.titulo, d.patron, d.letras * ANCHO_LETRA, d.alineacion, d.boton};
    }
    if (f.grdDetalle.notes.on()) f.grdDetalle.Columns(CUENTA).NoteWidth = 22 * ANCHO_LETRA;
    f.grdDetalle.SetCol(CUENTA);
    f.grdDetalle.Refresh();
}

} // namespace quorvel
