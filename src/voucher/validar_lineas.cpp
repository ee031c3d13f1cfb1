#include "platform/db/literal.h"
#include "text/numeros.h"
#include "voucher/validar.h"

namespace quorvel {
namespace {

constexpr const char* FOCO = "grdDetalle";
enum Columna { CUENTA = 1, AUXILIAR = 2, DEBE = 3 };

struct Falla {
    std::string mensaje;
    int columna;
};

std::optional<Falla> falla_de(const Linea& l, std::size_t i, Recordset& cuentas) {
    if (l.centro.empty()) return Falla{"Ingrese cuenta en linea " + std::to_string(i + 1), CUENTA};
    cuentas.FindFirst("centro=" + sql_texto(l.centro));
    if (cuentas.nomatch()) return Falla{"Cuenta " + l.centro + " no válida", CUENTA};
    const bool requiere = cuentas.fields("req_auxiliar").Value.text() == "1";
    if (requiere && l.auxiliar.empty()) return Falla{"Cuenta " + l.centro + " requiere auxiliar", AUXILIAR};
    if (!requiere && !l.auxiliar.empty())
        return Falla{"Cuenta " + l.centro + " no requiere auxiliar", AUXILIAR};
    if (l.debe.empty() && l.haber.empty()) return Falla{"Ingrese valor del debe", DEBE};
    return std::nullopt;
}

} // namespace

bool revisar_lineas(const std::vector<Linea>& lineas, Recordset& cuentas, const OyeRechazo& oye) {
    Decimal debe, haber;
    for (std::size_t i = 0; i < lineas.size(); ++i) {
        auto f = falla_de(lineas[i], i, cuentas);
        if (f && !oye({std::move(f->mensaje), Icono::critico, FOCO, static_cast<int>(i), f->columna}))
            return false;
        debe = debe + Decimal::leer(lineas[i].debe);
        haber = haber + Decimal::leer(lineas[i].haber);
    }
    if (debe == haber) return true;
    return oye({"Cuadricula en modo de edición, debe cambiarse de fila para que el ultimo registro quede "
                "ingresado correctamente, porque el comprobante esta descuadrado en el detalle",
                Icono::critico,
                FOCO,
                {},
                {}});
}

std::optional<Rechazo> ValidarLineas(const std::vector<Linea>& lineas, Recordset& cuentas) {
    return primer_rechazo([&](const OyeRechazo& oye) { (void)revisar_lineas(lineas, cuentas, oye); });
}

} // namespace quorvel
