#include "screen/detalle/detalle.h"
#include "screen/frmQuorvel.h"
#include "text/letras_utf8.h"

namespace quorvel {

namespace {

constexpr int CTRL_Y = 25;
constexpr bool es_control(int tecla) { return tecla < 32; }
constexpr bool es_digito(int tecla) { return tecla >= '0' && tecla <= '9'; }

int en_mayuscula(int tecla) {
    if (tecla < 128) return tecla >= 'a' && tecla <= 'z' ? tecla - 'a' + 'A' : tecla;
    std::string letra; // UTF-8 of one code point
    const auto c = static_cast<unsigned>(tecla);
    if (c < 0x800) {
        letra = {static_cast<char>(0xC0 | c >> 6), static_cast<char>(0x80 | (c & 0x3F))};
        const std::string m = mayusculas(letra);
        if (m.size() == 2)
            return (static_cast<unsigned char>(m[0]) & 0x1F) << 6 | (static_cast<unsigned char>(m[1]) & 0x3F);
    }
    return tecla;
}

int conciliado(int tecla) {
    const int m = en_mayuscula(tecla);
    if (m == 'S' || m == 'N') return m;
    // Backspace is no answer either; keys that move or close the edit belong to the grid.
    return es_control(tecla) && tecla != 8 ? tecla : 0;
}

int tasa(int tecla) {
    const bool signo = tecla == ',' || tecla == '-' || tecla == '.' || tecla == '/';
    return es_control(tecla) || es_digito(tecla) || signo ? tecla : 0;
}

} // namespace

int tecla_aceptada(int columna, int tecla) {
    switch (columna) {
    case CUENTA:
    case AUXILIAR:
    case CENTRO:
    case OTRO_IMP:
    case DEBE:
    case HABER:
    case DOC_PAGADO: return es_control(tecla) || es_digito(tecla) ? tecla : 0;
    case GLOSA: return en_mayuscula(tecla);
    case CONCILIADO: return conciliado(tecla);
    case TASA: return tasa(tecla);
    default: return tecla;
    }
}

void tecla_detalle(frmQuorvel& f, int& tecla) {
    const int col = f.grdDetalle.Col();
    const bool con_consulta = col == CUENTA || col == AUXILIAR || col == CENTRO || col == OTRO_IMP;
    if (tecla == CTRL_Y && con_consulta) {
        tecla = 0;
        boton_detalle(f, col);
        return;
    }
    tecla = tecla_aceptada(col, tecla);
}

} // namespace quorvel
