#include "voucher/de_version.h"

#include "historia/celdas.h"
#include "historia/columnas.h"
#include "voucher/cargar.h"

#include <algorithm>
#include <stdexcept>

namespace quorvel {
namespace {

/// A row that stands in a version instead of a table; a column that it lacks is null.
class FilaDeVersion final : public Recordset {
public:
    template <std::size_t N>
    FilaDeVersion(const std::array<ColumnaGuardada, N>& columnas, const std::vector<std::string>& celdas) {
        for (std::size_t i = 0; i < N; ++i)
            agregar(columnas[i].nombre, i < celdas.size() && !celdas[i].empty() ? Value(celdas[i]) : Value());
    }
    void agregar(std::string nombre, Value valor) {
        columnas_.push_back({std::move(nombre), ColumnKind::text});
        valores_.push_back(std::move(valor));
    }
    Field fields(std::string_view nombre) override {
        const auto i = std::ranges::find(columnas_, nombre, &ColumnInfo::name);
        return {i == columnas_.end() ? Value() : valores_[static_cast<std::size_t>(i - columnas_.begin())]};
    }
    bool eof() override { return false; }
    void MoveNext() override {}
    void FindFirst(const std::string&) override {}
    [[nodiscard]] bool nomatch() const override { return true; }
    const std::vector<ColumnInfo>& columns() override { return columnas_; }
    Value at(std::size_t i) override { return valores_.at(i); }

private:
    std::vector<ColumnInfo> columnas_;
    std::vector<Value> valores_;
};

} // namespace

std::optional<Clave> clave_de_version(int empresa, const std::string& clave) {
    std::array<std::string, 4> partes;
    std::size_t desde = 0;
    for (std::size_t i = 0; i < 3; ++i) { // the number is free text and comes last
        const std::size_t raya = clave.find('|', desde);
        if (raya == std::string::npos) return std::nullopt;
        partes[i] = clave.substr(desde, raya - desde);
        desde = raya + 1;
    }
    const auto fecha = leer_fecha_iso(partes[0]);
    if (!fecha) return std::nullopt;
    return Clave{empresa, partes[2], *fecha, partes[1], clave.substr(desde)};
}

std::optional<Comprobante> comprobante_de_version(int empresa, const Version& v) {
    const auto clave = clave_de_version(empresa, v.clave);
    const auto cabecera = leer_celdas(v.cabecera);
    if (!clave || cabecera.empty()) return std::nullopt;
    FilaDeVersion fila(COLUMNAS_CABECERA, cabecera);
    fila.agregar("empresa", Value(std::int64_t{empresa}));
    fila.agregar("subsistema", Value(clave->subsistema));
    fila.agregar("f_comp", Value(fecha_iso(clave->f_comp)));
    fila.agregar("documento", Value(clave->documento));
    fila.agregar("num_docum", Value(clave->num_docum));
    Comprobante c = leer_cabecera(fila);
    for (const auto& celdas : leer_filas(v.lineas)) {
        FilaDeVersion linea(COLUMNAS_LINEA, celdas);
        c.lineas.push_back(leer_linea(linea, 0));
    }
    c.adjuntos = leer_celdas(v.adjuntos);
    return c;
}

} // namespace quorvel
