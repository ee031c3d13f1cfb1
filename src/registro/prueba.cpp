#include "registro/prueba.h"

#include "registro/clases.h"

#include <algorithm>
#include <map>

namespace quorvel::registro {
namespace {

constexpr std::int64_t Montos::*COLUMNAS[] = {&Montos::cantidad, &Montos::neto, &Montos::exento, &Montos::iva,
                                              &Montos::otro};

std::string clase_prueba(const Fila& f) {
    return f.doc_libro.empty() ? nombre_clase(f.doc.tipo) : f.doc_libro;
}

bool contiene(const std::vector<int>& libros, int libro) {
    return std::ranges::find(libros, libro) != libros.end();
}

void sumar(Montos& a, const Montos& b) {
    for (const auto columna : COLUMNAS) a.*columna += b.*columna;
}

} // namespace

Montos LineaPrueba::diferencia() const {
    Montos d;
    for (const auto columna : COLUMNAS) d.*columna = registro.*columna - libros.*columna;
    return d;
}

std::vector<LineaPrueba> probar_mes(const std::vector<Fila>& filas, const Libros& libros,
                                    const std::vector<int>& completos) {
    std::map<std::pair<int, std::string>, LineaPrueba> lineas;
    const auto linea = [&](int libro, const std::string& clase) -> LineaPrueba& {
        LineaPrueba& l = lineas[{libro, clase}];
        l.libro = libro;
        l.clase = clase;
        return l;
    };
    for (const Fila& f : filas) {
        if (f.estado == Estado::falta || !contiene(completos, f.doc.libro)) continue;
        if (f.doc.situacion != Situacion::registro) continue;
        sumar(linea(f.doc.libro, clase_prueba(f)).registro, {1, f.c.neto, f.c.exento, f.c.iva, f.c.otro});
    }
    for (const EnLibros& e : libros.del_mes)
        if (contiene(completos, e.libro))
            sumar(linea(e.libro, e.doc_libro).libros, {1, e.neto, e.exento, e.iva, e.otro});
    std::vector<LineaPrueba> lista;
    for (auto& [llave, l] : lineas) lista.push_back(std::move(l));
    return lista;
}

bool causa_diferencia(const Fila& f, const LineaPrueba& l, Mes mes) {
    if (f.doc.libro != l.libro || clase_prueba(f) != l.clase || l.cuadra()) return false;
    const bool cuenta = f.estado == Estado::falta || f.doc.situacion == Situacion::registro;
    if (f.estado != Estado::contabilizado) return cuenta || f.clave.has_value();
    return !cuenta || !mes.contiene(f.clave->f_comp); // in the books of another month, or not counted here
}

} // namespace quorvel::registro
