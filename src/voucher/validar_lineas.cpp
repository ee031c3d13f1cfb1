#include "platform/db/literal.h"
#include "text/numeros.h"
#include "voucher/chart.h"
#include "voucher/validar.h"

#include <unordered_map>

namespace quorvel {
namespace {

enum Columna { CUENTA = 1, AUXILIAR = 2, DEBE = 3, HABER = 4 };

struct Falla {
    std::string mensaje;
    int columna;
};

struct Cuenta {
    bool existe = false, requiere_auxiliar = false;
};

/// A server is asked once for each account, however many lines use it.
class Cuentas {
public:
    explicit Cuentas(Recordset& maestro) : maestro_(maestro) {}
    const Cuenta& operator[](const std::string& codigo) {
        const auto [i, nueva] = vistas_.try_emplace(codigo);
        if (!nueva) return i->second;
        maestro_.FindFirst("centro=" + sql_texto(codigo));
        if (!maestro_.nomatch()) i->second = {true, exige_auxiliar(maestro_.fields("req_auxiliar").Value)};
        return i->second;
    }

private:
    Recordset& maestro_;
    std::unordered_map<std::string, Cuenta> vistas_;
};

std::optional<Falla> falla_de(const Linea& l, std::size_t i, Cuentas& cuentas) {
    if (l.centro.empty()) return Falla{"Ingrese cuenta en linea " + std::to_string(i + 1), CUENTA};
    const Cuenta& cuenta = cuentas[l.centro];
    if (!cuenta.existe) return Falla{"Cuenta " + l.centro + " no válida", CUENTA};
    if (cuenta.requiere_auxiliar && l.auxiliar.empty())
        return Falla{"Cuenta " + l.centro + " requiere auxiliar", AUXILIAR};
    if (!cuenta.requiere_auxiliar && !l.auxiliar.empty())
        return Falla{"Cuenta " + l.centro + " no requiere auxiliar", AUXILIAR};
    if (!l.debe && !l.haber) return Falla{"Ingrese valor del debe", DEBE};
    return std::nullopt;
}

} // namespace

bool revisar_lineas(const std::vector<Linea>& lineas, Recordset& maestro, const OyeRechazo& oye) {
    Cuentas cuentas(maestro);
    Decimal debe, haber;
    bool cabe = true;
    for (std::size_t i = 0; i < lineas.size(); ++i) {
        auto f = falla_de(lineas[i], i, cuentas);
        if (f && !oye({std::move(f->mensaje), Icono::critico, Campo::detalle, true, static_cast<int>(i),
                       f->columna}))
            return false;
        debe = debe + lineas[i].debe.value_or(0);
        haber = haber + lineas[i].haber.value_or(0);
        if (!cabe || (cabe_en_total(debe) && cabe_en_total(haber))) continue;
        cabe = false;
        if (!oye({"Monto no válido", Icono::critico, Campo::detalle, true, static_cast<int>(i),
                  cabe_en_total(debe) ? HABER : DEBE}))
            return false;
    }
    if (debe == haber) return true;
    return oye({"Cuadricula en modo de edición, debe cambiarse de fila para que el ultimo registro quede "
                "ingresado correctamente, porque el comprobante esta descuadrado en el detalle",
                Icono::critico, Campo::detalle});
}

std::optional<Rechazo> ValidarLineas(const std::vector<Linea>& lineas, Recordset& cuentas) {
    return primer_rechazo([&](const OyeRechazo& oye) { (void)revisar_lineas(lineas, cuentas, oye); });
}

} // namespace quorvel
