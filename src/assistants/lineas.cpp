#include "assistants/lineas.h"

#include "assistants/libros.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace quorvel {
namespace {

using K = Configuracion;
constexpr Contraparte FACTURA_COBRAR{&K::factura_cobrar, &K::req_factura_cobrar};
constexpr Contraparte BOLETA_COBRAR{&K::boleta_cobrar, &K::req_boleta_cobrar};
constexpr Contraparte FACTURA_PAGAR{&K::factura_pagar, &K::req_factura_pagar};
constexpr Contraparte BOLETA_PAGAR{&K::boleta_pagar, &K::req_boleta_pagar};

// Income looks for its other tax where purchases do, egress where sales do.
constexpr std::array<Variante, 4> VARIANTES{{
    {VENTAS, "Asistente de Ventas", Lado::haber, &K::iva, &K::otros_impuestos, FACTURA_COBRAR, BOLETA_COBRAR,
     es_boleta_venta, true},
    {COMPRAS, "Asistente de Compras", Lado::debe, &K::iva_compra, &K::otros_impuestos_compra, FACTURA_PAGAR,
     BOLETA_PAGAR, es_boleta_compra, false},
    {INGRESOS,
     "Asistente de Ingreso",
     Lado::haber,
     nullptr,
     &K::otros_impuestos_compra,
     FACTURA_COBRAR,
     {},
     nullptr,
     false},
    {EGRESOS,
     "Asistente de Egreso",
     Lado::debe,
     nullptr,
     &K::otros_impuestos,
     FACTURA_PAGAR,
     {},
     nullptr,
     false},
}};

/// Collects lines, each with both sides.
class Armador {
public:
    explicit Armador(const std::string& concepto) : glosa_(primeros(concepto, LARGO_GLOSA)) {}
    void poner(const std::string& cuenta, const std::string& auxiliar, bool en_debe, Decimal monto) {
        Linea l;
        l.centro = cuenta;
        l.auxiliar = auxiliar;
        l.debe = en_debe ? monto : 0;
        l.haber = en_debe ? 0 : monto;
        l.glosa = glosa_;
        lineas_.push_back(std::move(l));
    }
    std::vector<Linea> lineas() { return std::move(lineas_); }

private:
    std::string glosa_;
    std::vector<Linea> lineas_;
};

std::string auxiliar_de(const Contraparte& c, const Configuracion& k, const std::string& auxiliar) {
    return k.*c.requiere == "1" ? auxiliar : "";
}

} // namespace

const Variante& variante(int libro) {
    const auto* const v = std::ranges::find(VARIANTES, libro, &Variante::libro);
    if (v == VARIANTES.end()) throw std::out_of_range("libro sin asistente");
    return *v;
}

bool principal_al_debe(const Variante& v, const DocumentoTributario& d) {
    const bool girar = v.iva == nullptr ? d.trasponer : es_nota_credito(d.documento);
    return (v.principal == Lado::debe) != girar;
}

bool con_monto_negativo(const std::vector<Linea>& lineas) {
    return std::ranges::any_of(
        lineas, [](const Linea& l) { return l.debe.value_or(0) < 0 || l.haber.value_or(0) < 0; });
}

std::vector<Linea> lineas_documento(const Variante& v, const DocumentoTributario& d, const Configuracion& k,
                                    const std::string& concepto) {
    const bool solo_total = v.iva == nullptr;
    const bool boleta = !solo_total && v.es_boleta(d.documento);
    const bool impuestos = !solo_total && (!boleta || v.iva_en_boleta);
    const bool debe = principal_al_debe(v, d);
    const Decimal principal = d.total - d.otro - d.iva;

    Armador a(concepto);
    a.poner(d.cuenta, d.auxiliar, debe, solo_total ? d.total : principal);
    if (impuestos) a.poner(k.*v.iva, "", debe, d.iva);
    const Contraparte& contraparte = boleta ? v.boleta : v.factura;
    a.poner(k.*contraparte.cuenta, auxiliar_de(contraparte, k, d.aux_contraparte), !debe, d.total);
    if (impuestos && d.otro != 0)
        a.poner(k.*v.otros, "", debe == (d.otro > 0), d.otro > 0 ? d.otro : -d.otro);
    return a.lineas();
}

std::vector<Linea> lineas_retencion(const DocumentoTributario& d, const Configuracion& k,
                                    const std::string& concepto) {
    Armador a(concepto);
    a.poner(d.cuenta, d.auxiliar, true, d.total);
    a.poner(k.retencion_seg_cat, "", false, d.iva);
    a.poner(k.honorarios_pagar,
            auxiliar_de({&K::honorarios_pagar, &K::req_honorarios_pagar}, k, d.aux_contraparte), false,
            d.total - d.iva);
    return a.lineas();
}

std::vector<Linea> lineas_retiro_socio(const RetiroSocio& r, const std::string& concepto) {
    Armador a(concepto);
    a.poner(r.banco, r.aux_banco, true, r.total);
    a.poner(r.socio, r.aux_socio, false, r.total);
    return a.lineas();
}

} // namespace quorvel
