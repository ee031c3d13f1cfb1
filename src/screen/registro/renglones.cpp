#include "screen/registro/renglones.h"

#include "assistants/libros.h"
#include "registro/clases.h"
#include "screen/campos.h"
#include "text/cuantos.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"

#include <array>
#include <span>

namespace quorvel {

using namespace registro;

namespace {

struct Diseno {
    const char* titulo;
    int ancho, alineacion;
};

void preparar(ui::ctlPlanilla& g, std::span<const Diseno> columnas) {
    g.SetCols(static_cast<int>(columnas.size()));
    for (int i = 0; i < g.Cols(); ++i) {
        const Diseno& d = columnas[static_cast<std::size_t>(i)];
        g.Columns(i).Caption = d.titulo;
        g.Columns(i).Width = d.ancho;
        g.Columns(i).Alignment = d.alineacion;
    }
}

std::string pesos(std::int64_t n) { return Decimal(n).formato("#,##0"); }
std::string documentos(std::size_t n) {
    return cuantos(static_cast<std::int64_t>(n), "documento", "documentos");
}
std::string libro_de(int libro) { return std::string(TEXTOS_LIBRO.at(static_cast<std::size_t>(libro))); }

std::string estado_de(const Fila& f) {
    const std::string estado = texto(f.estado);
    return f.doc.situacion == Situacion::registro ? estado : estado + " (" + texto(f.doc.situacion) + ")";
}

std::string diferencia_de(const LineaPrueba& l) {
    const Montos d = l.diferencia();
    std::string t;
    for (const auto& [que, cuanto] : {std::pair{"documentos", d.cantidad},
                                      {"neto", d.neto},
                                      {"exento", d.exento},
                                      {"IVA", d.iva},
                                      {"otro", d.otro}})
        if (cuanto != 0) t += (t.empty() ? "" : "; ") + std::string(que) + " " + pesos(cuanto);
    return t.empty() ? "0" : t;
}

std::int64_t suma_marcada(const Bandeja& b) {
    std::int64_t suma = 0;
    for (std::size_t i = 0; i < b.filas().size(); ++i)
        if (b.marcada(i)) suma += b.filas()[i].c.total;
    return suma;
}

} // namespace

void preparar_columnas_registro(ui::ctlPlanilla& grilla) {
    static constexpr std::array<Diseno, 13> COLUMNAS{{{"", 24, 0},
                                                      {"Estado", 118, 0},
                                                      {"Libro", 76, 0},
                                                      {"Documento", 118, 0},
                                                      {"RUT", 92, 0},
                                                      {"Nombre", 176, 0},
                                                      {"Folio", 66, 1},
                                                      {"Fecha", 80, 0},
                                                      {"Neto", 84, 1},
                                                      {"Exento", 72, 1},
                                                      {"IVA", 78, 1},
                                                      {"Otro imp.", 72, 1},
                                                      {"Total", 88, 1}}};
    preparar(grilla, COLUMNAS);
}

void preparar_columnas_prueba(ui::ctlPlanilla& grilla) {
    static constexpr std::array<Diseno, 8> COLUMNAS{{{"Libro", 76, 0},
                                                     {"Documento", 130, 0},
                                                     {"Cantidad", 80, 1},
                                                     {"Neto", 190, 1},
                                                     {"Exento", 140, 1},
                                                     {"IVA", 170, 1},
                                                     {"Otro imp.", 150, 1},
                                                     {"Diferencia", 250, 0}}};
    preparar(grilla, COLUMNAS);
}

std::string renglon_registro(const Bandeja& b, std::size_t fila) {
    const Fila& f = b.filas().at(fila);
    return fila_texto({b.marcada(fila) ? MARCA : "", estado_de(f), libro_de(f.doc.libro),
                       f.doc_libro.empty() ? nombre_clase(f.doc.tipo) : f.doc_libro, f.doc.rut, f.doc.nombre,
                       f.doc.folio, f.doc.fecha ? fecha_dmy(*f.doc.fecha) : "", pesos(f.c.neto),
                       pesos(f.c.exento), pesos(f.c.iva + f.c.costo), pesos(f.c.otro), pesos(f.c.total)});
}

std::string renglon_prueba(const LineaPrueba& l) {
    std::vector<std::string> celdas{libro_de(l.libro), l.clase};
    for (const auto columna :
         {&Montos::cantidad, &Montos::neto, &Montos::exento, &Montos::iva, &Montos::otro})
        celdas.push_back(pesos(l.registro.*columna) + " / " + pesos(l.libros.*columna));
    celdas.push_back(diferencia_de(l));
    return fila_texto(celdas);
}

std::string resumen_bandeja(const Bandeja& b) {
    const std::string t = mayusculas(primeros(b.resumen(), 1)) + b.resumen().substr(1);
    return b.marcados() == 0
               ? t
               : t + ". Marcados: " + std::to_string(b.marcados()) + " por " + pesos(suma_marcada(b));
}

std::string detalle_fila(const Bandeja& b, const Fila& f) {
    std::string t;
    if (f.clave) t = "Comprobante " + texto(*f.clave);
    if (const Propuesta& p = b.propuesta(f); f.estado == Estado::nuevo) {
        if (!p.cuenta.empty())
            t = "Cuenta " + p.cuenta + (p.de ? ", según el comprobante " + texto(*p.de) : ", dada por usted");
        if (const std::string falta = b.le_falta(f); !falta.empty())
            t += (t.empty() ? "" : ". ") + std::string("Falta ") +
                 (falta == "cuenta" ? "la cuenta" : "el auxiliar") + " de la contraparte (F4)";
    }
    if (!f.detalle.empty()) t += (t.empty() ? "" : ". ") + f.detalle;
    return t;
}

std::string pregunta_contabilizar(const Bandeja& b) {
    return "¿Contabilizar " + documentos(b.marcados()) + " por " + pesos(suma_marcada(b)) + "?";
}

std::string texto_balance(const Balance& b) {
    std::string t = b.contabilizados == 1 ? "Quedó contabilizado 1 documento"
                                          : "Quedaron contabilizados " + documentos(b.contabilizados);
    if (b.rechazados > 0) t += "; " + documentos(b.rechazados) + " no: la línea de cada uno dice por qué";
    if (b.cancelado) t += "; los demás siguen marcados";
    if (!b.error.empty()) t += "; los demás siguen marcados. " + b.error;
    return t;
}

} // namespace quorvel
