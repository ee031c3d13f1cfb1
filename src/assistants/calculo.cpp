#include "assistants/calculo.h"

#include "assistants/libros.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"
#include "voucher/iva.h"

namespace quorvel {
namespace {

bool lleva_iva(const Importes& i) {
    return i.libro == VENTAS || (i.libro == COMPRAS && i.documento != "BOLETA");
}
bool boleta_sin_iva(const Importes& i) { return i.libro == COMPRAS && i.documento == "BOLETA"; }
double valor(const std::string& texto) { return valnumeroformato(texto); }
std::string otro_de(const Importes& i) { return mostrar_monto(valor(i.neto) * valnumerobase(i.tasa) / 100); }
double retencion(const Importes& i) { return LeerNumero(i.porcentaje) / 100; }

Importes con_total(Importes i) {
    const double resto = valor(i.otro) + valor(i.exento);
    if (lleva_iva(i)) i.total = mostrar_monto(con_iva(valor(i.neto)) + resto);
    if (boleta_sin_iva(i)) {
        i.iva = "0";
        i.total = mostrar_monto(valor(i.neto) + resto);
    }
    return i;
}

Importes bruto_del_liquido(Importes i) {
    const double p = retencion(i), bruto = valor(i.neto) / (1 - p);
    i.iva = mostrar_monto(bruto * p);
    i.total = mostrar_monto(bruto);
    return i;
}

} // namespace

double LeerNumero(std::string_view texto) { return valnumeroformato(texto); }

bool monto_escrito(std::string_view texto) {
    constexpr std::int64_t MAYOR = 999'999'999'999'999; // what arithmetic on doubles keeps exact
    const Decimal monto = Decimal::leer(texto);
    return monto_sql(texto) && monto >= -MAYOR && monto <= MAYOR;
}

bool tasa_escrita(std::string_view texto) {
    const std::string tasa = reemplazar(recortar(texto), ".", ",");
    return numero_sql(tasa) && tasa.find_first_of("+-") == std::string::npos;
}

std::string mostrar_monto(double v) { return formato(v, "#,##0"); }

Importes neto_cambiado(Importes i) {
    if (i.libro == RETENCIONES) return bruto_del_liquido(i);
    if (lleva_iva(i)) {
        i.iva = mostrar_monto(iva_de(valor(i.neto)));
        i.otro = otro_de(i);
    }
    return con_total(i);
}

Importes exento_cambiado(Importes i) {
    if (i.libro == INGRESOS || i.libro == EGRESOS) i.total = mostrar_monto(valor(i.exento));
    return con_total(i);
}

Importes otro_cambiado(Importes i) { return con_total(i); }

Importes tasa_cambiada(Importes i) {
    i.otro = otro_de(i);
    return con_total(i);
}

Importes total_cambiado(Importes i) {
    if (i.libro != RETENCIONES) return i;
    const double p = retencion(i), total = valor(i.total);
    i.iva = mostrar_monto(total * p);
    i.neto = mostrar_monto(total * (1 - p));
    return i;
}

Importes porcentaje_elegido(Importes i) { return i.neto.empty() ? i : bruto_del_liquido(i); }

Importes calcular_iva(Importes i) {
    const double resto = valor(i.exento) + valor(i.otro);
    i.neto = mostrar_monto(neto_de(valor(i.total) - resto));
    const double neto = valor(i.neto), iva = iva_de(neto);
    i.iva = mostrar_monto(iva);
    i.total = mostrar_monto(Round(iva) + resto + neto);
    return i;
}

std::string texto_cuadre(const Importes& i) {
    const bool solo_exento = i.libro == INGRESOS || i.libro == EGRESOS;
    // The total stands by itself, or has parts of another book that this dialog does not show.
    if (solo_exento && (valor(i.exento) == 0 || valor(i.neto) != 0)) return "";
    const bool honorarios = i.libro == RETENCIONES;
    const Decimal total = Decimal::leer(i.total);
    Decimal partes = solo_exento ? Decimal::leer(i.exento) : Decimal::leer(i.neto) + Decimal::leer(i.iva);
    if (!solo_exento && !honorarios) partes = partes + Decimal::leer(i.exento) + Decimal::leer(i.otro);
    if (partes == Decimal() && total == Decimal()) return "";
    const Decimal diferencia = total - partes;
    if (diferencia == Decimal()) return "Cuadra";
    return "Diferencia " + diferencia.formato("#,##0");
}

} // namespace quorvel
