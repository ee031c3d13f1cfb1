#include "oficina/tabla.h"

#include "text/letras_utf8.h"
#include "text/numeros.h"

#include <algorithm>
#include <array>

namespace quorvel::oficina {

namespace {

constexpr std::array<std::string_view, 14> MONTOS{
    "Debe",   "Haber",  "Saldo",   "Débitos",  "Créditos", "Deudor",       "Acreedor",
    "Activo", "Pasivo", "Pérdida", "Ganancia", "Total",    "Comprobantes", "Anterior"};

std::int64_t monto(const std::string& celda) {
    const bool negativo = celda.starts_with('-');
    const std::int64_t n = val_entero(negativo ? celda.substr(1) : celda);
    return negativo ? -n : n;
}

} // namespace

std::vector<std::string> celdas_csv(std::string_view linea) {
    std::vector<std::string> celdas(1);
    bool entre_comillas = false;
    for (std::size_t i = 0; i < linea.size(); ++i) {
        if (linea[i] == '"' && entre_comillas && i + 1 < linea.size() && linea[i + 1] == '"')
            celdas.back() += linea[++i];
        else if (linea[i] == '"')
            entre_comillas = !entre_comillas;
        else if (linea[i] == ';' && !entre_comillas)
            celdas.emplace_back();
        else
            celdas.back() += linea[i];
    }
    return celdas;
}

void TablaTexto::agregar(std::string_view linea_csv) {
    filas_.push_back(celdas_csv(linea_csv));
    filas_.back().resize(filas_.front().size());
}

bool TablaTexto::es_monto(std::size_t columna) const {
    return std::ranges::find(MONTOS, filas_.front()[columna]) != MONTOS.end();
}

std::vector<TablaTexto::Fila> TablaTexto::vistas() const {
    std::vector<Fila> vistas = filas_;
    for (std::size_t f = 0; f < vistas.size(); ++f)
        for (std::size_t c = 0; c < vistas[f].size(); ++c) {
            std::string& celda = vistas[f][c];
            celda = sin_controles(celda);
            if (f == 0 || !es_monto(c) || celda.empty()) continue;
            const bool vacio =
                celda == "0" && filas_.front()[c] != "Saldo"; // a column of zeros hides the rest
            celda = vacio ? "" : Decimal(monto(celda)).formato("#,##0");
        }
    return vistas;
}

std::string TablaTexto::texto() const {
    if (filas_.empty()) return {};
    const std::size_t columnas = filas_.front().size();
    const std::vector<Fila> filas = vistas();
    std::vector<std::size_t> anchos(columnas);
    for (const Fila& fila : filas)
        for (std::size_t c = 0; c < columnas; ++c) anchos[c] = std::max(anchos[c], largo(fila[c]));
    std::string salida;
    for (const Fila& fila : filas) {
        std::string renglon;
        for (std::size_t c = 0; c < columnas; ++c) {
            const std::string relleno(anchos[c] - largo(fila[c]), ' ');
            renglon += (c > 0 ? "  " : "") + (es_monto(c) ? relleno + fila[c] : fila[c] + relleno);
        }
        salida += recortar_fin(renglon) + "\n";
    }
    return salida;
}

nlohmann::json TablaTexto::json() const {
    nlohmann::json lista = nlohmann::json::array();
    for (std::size_t f = 1; f < filas_.size(); ++f) {
        nlohmann::json objeto = nlohmann::json::object();
        for (std::size_t c = 0; c < filas_.front().size(); ++c) {
            const std::string& celda = filas_[f][c];
            objeto[filas_.front()[c]] =
                es_monto(c) && !celda.empty() ? nlohmann::json(monto(celda)) : nlohmann::json(celda);
        }
        lista.push_back(std::move(objeto));
    }
    return lista;
}

} // namespace quorvel::oficina
