#include "screen/anchos.h"

#include "platform/files/settings_file.h"
#include "text/letras_utf8.h"

#include <algorithm>
#include <charconv>

namespace quorvel {

namespace {
constexpr const char* CLAVE = "frmquorvel_grddetalle";
constexpr std::size_t LARGO_MAXIMO = 250;
constexpr const char* LISTAS[] = {"frmBuscaCentro", "frmBuscaAuxiliar", "frmBuscaQuorvel",
                                  "frmpersona",     "frmcuenta",        "frmBuscaImpuesto"};

std::string clave(const char* forma) { return minusculas(forma) + "_ctlconsulta1"; }

void elegir_ancho(ui::ctlPlanilla::Column& columna, int ancho) {
    columna.WidthChosen = columna.WidthChosen || ancho != columna.Width;
    columna.Width = ancho;
}
} // namespace

void restaurar_anchos(ui::ctlPlanilla& grilla, const std::filesystem::path& carpeta) {
    const std::string valor = recortar(primeros(SettingsFile(carpeta).get("NIVO", CLAVE), LARGO_MAXIMO));
    int columna = 0;
    for (std::size_t inicio = 0, fin; columna < grilla.Cols(); ++columna, inicio = fin + 1) {
        fin = valor.find('#', inicio);
        if (fin == std::string::npos) return; // a piece without its mark was cut off
        int ancho = 0;
        const char* hasta = valor.data() + fin;
        const auto leido = std::from_chars(valor.data() + inicio, hasta, ancho);
        if (leido.ec == std::errc{} && leido.ptr == hasta && ancho >= 0)
            elegir_ancho(grilla.Columns(columna), ancho);
    }
}

void guardar_anchos(const ui::ctlPlanilla& grilla, const std::filesystem::path& carpeta) {
    std::string valor;
    for (int i = 0; i < grilla.Cols(); ++i) valor += std::to_string(grilla.Columns(i).Width) + '#';
    // A folder that cannot be written costs the widths, nothing else.
    (void)SettingsFile(carpeta).set("NIVO", CLAVE, valor);
}

void restaurar_anchos_listas(ui::Escritorio& escritorio, const std::filesystem::path& carpeta) {
    const SettingsFile ajustes(carpeta);
    for (const char* forma : LISTAS)
        if (const std::string anchos = ajustes.get("NIVO", clave(forma)); !anchos.empty())
            escritorio.list_widths.try_emplace(forma, anchos);
}

void guardar_anchos_listas(const ui::Escritorio& escritorio, const std::filesystem::path& carpeta) {
    const SettingsFile ajustes(carpeta);
    for (const char* forma : LISTAS)
        if (const auto anchos = escritorio.list_widths.find(forma); anchos != escritorio.list_widths.end())
            (void)ajustes.set("NIVO", clave(forma), anchos->second);
}

} // namespace quorvel
