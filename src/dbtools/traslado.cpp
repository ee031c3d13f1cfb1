#include "dbtools/traslado.h"

#include "dbtools/cerradura.h"
#include "dbtools/compartidos.h"
#include "dbtools/directorio.h"
#include "dbtools/turno.h"
#include "platform/db/clsConexion.h"
#include "platform/db/literal.h"
#include "platform/files/attachments.h"
#include "text/letras_utf8.h"

#include <algorithm>
#include <functional>
#include <map>

namespace quorvel::dbtools {
namespace {

/// What a database knows of a move: in the source "sale" while the company is closed for changes and "sobra"
/// once it has gone; where it arrives "llega" while it is not to be seen yet, with its row of admempresa.
constexpr const char* MARCAS = "create table if not exists admtraslado (empresa integer not null primary "
                               "key, papel text not null, conjuntos "
                               "bigint not null default 0, correlativos bigint not null default 0, n_empresa "
                               "text, rut text, direccion text, "
                               "giro text)";
const TablaMovida MARCA{
    "admtraslado",
    {"empresa", "papel", "conjuntos", "correlativos", "n_empresa", "rut", "direccion", "giro"}};
const TablaMovida EMPRESAS{"admempresa", {"empresa", "n_empresa", "rut", "direccion", "giro"}};
const TablaMovida ADJUNTOS{"ctdcomprad", {"comprobante_adjunto", "correlativo", "nombre"}};
/// Numbers that others may be about to take while the move chooses its own.
constexpr std::int64_t HOLGURA = 1000;

std::vector<TablaMovida> tablas_de_empresa(Base& base) {
    std::map<std::string, std::vector<std::string>> todas;
    for (const auto& fila : base.columnas()) todas[minusculas(fila[0])].push_back(minusculas(fila[1]));
    std::vector<TablaMovida> tablas;
    for (auto& [nombre, columnas] : todas)
        if (nombre != EMPRESAS.nombre && nombre != MARCA.nombre && nombre != DIRECTORIO &&
            std::ranges::count(columnas, "empresa") > 0)
            tablas.push_back({nombre, std::move(columnas)});
    return tablas;
}

/// One end of the move.
struct Lado {
    std::string conexion;
    std::unique_ptr<Base> base;
    std::string empresa;
    std::vector<TablaMovida> tablas;
    Attachments adjuntos;

    Lado(const std::string& texto, int codigo, const std::filesystem::path& carpeta)
        : conexion(normalizar_conexion(texto)), base(abrir_base(conexion, Abrir::existente)),
          empresa(std::to_string(codigo)), adjuntos(carpeta, attachment_database(conexion)) {
        base->ejecutar(MARCAS);
        tablas = tablas_de_empresa(*base);
    }
    [[nodiscard]] std::string suya() const { return " where empresa=" + empresa; }
    [[nodiscard]] std::string sus_adjuntos() const {
        return " where comprobante_adjunto<>0 and comprobante_adjunto in (select comprobante_adjunto from "
               "ctcquorvel" +
               suya() + ")";
    }
    [[nodiscard]] bool hay_empresa() { return !leer_filas(*base, EMPRESAS, suya()).empty(); }
    [[nodiscard]] std::optional<Celdas> marca() {
        auto filas = leer_filas(*base, MARCA, suya());
        return filas.empty() ? std::nullopt : std::optional(filas.front());
    }
    void marcar(Celdas marca) {
        base->ejecutar("delete from admtraslado" + suya());
        escribir_filas(*base, MARCA, {std::move(marca)});
    }
    void en_lote(const std::function<void()>& cambio) {
        Lote lote(*base);
        cambio();
        lote.confirmar();
    }
    /// Conditions that cut a table into pieces which fit the memory: the days of its vouchers.
    [[nodiscard]] std::vector<std::string> trozos(const TablaMovida& tabla) {
        if (std::ranges::count(tabla.columnas, "f_comp") == 0) return {suya()};
        std::vector<std::string> partes;
        // the highest attachment set first: who saves meanwhile takes a higher one
        const bool conjuntos = std::ranges::count(tabla.columnas, ADJUNTOS.columnas.front()) > 0;
        for (const auto& dia :
             base->consultar("select f_comp from " + tabla.nombre + suya() + " group by f_comp" +
                             (conjuntos ? " order by max(comprobante_adjunto) desc" : "")))
            partes.push_back(suya() +
                             (dia[0].empty() ? " and f_comp is null" : " and f_comp=" + sql_texto(dia[0])));
        return partes;
    }
};

class Traslado {
public:
    Traslado(const PedidoTraslado& p, AvancePartes avance)
        : de_(p.de, p.empresa, p.adjuntos), a_(p.a, p.codigo > 0 ? p.codigo : p.empresa, p.adjuntos),
          turno_(*de_.base, de_.conexion), avance_(std::move(avance)),
          compartidos_(*de_.base, *a_.base, p.empresa), cerradura_(*de_.base, p.empresa) {
        codigos_.empresa = hecho_.codigo = p.codigo > 0 ? p.codigo : p.empresa;
    }

    Trasladado ejecutar() {
        exigir_que_se_pueda();
        if (de_.hay_empresa()) {
            cerrar();
            borrar_copia();
            copiar();
            comparar();
            entregar();
        }
        recibir();
        limpiar();
        return hecho_;
    }

    void deshacer() {
        if (!de_.hay_empresa())
            throw std::runtime_error(
                "La empresa ya dejó esta base de datos: repita el traslado para terminarlo");
        if (a_.marca()) borrar_copia();
        de_.en_lote([&] {
            cerradura_.abrir(de_.tablas);
            de_.base->ejecutar("delete from admtraslado" + de_.suya());
        });
    }

private:
    void exigir_que_se_pueda() {
        const bool aqui = de_.hay_empresa(), alla = a_.hay_empresa();
        if (aqui && alla)
            throw std::runtime_error("Ya hay una empresa " + a_.empresa +
                                     " en el destino; --codigo le da otro");
        if (!aqui && !alla && !a_.marca())
            throw std::runtime_error("No existe la empresa " + de_.empresa + " en " + de_.conexion);
        if (!aqui) return;
        std::string faltas;
        for (const TablaMovida& tabla : de_.tablas) {
            const auto suya = std::ranges::find(a_.tablas, tabla.nombre, &TablaMovida::nombre);
            for (const std::string& columna : tabla.columnas)
                if (suya == a_.tablas.end() || std::ranges::count(suya->columnas, columna) == 0)
                    faltas +=
                        "\nFalta la columna " + columna + " de la tabla " + tabla.nombre + " en el destino";
        }
        for (const std::string& choque : compartidos_.choques()) faltas += "\n" + choque;
        if (!faltas.empty()) throw std::runtime_error(faltas.substr(1));
    }

    void cerrar() {
        de_.en_lote([&] {
            de_.marcar({de_.empresa, "sale", "0", "0", {}, {}, {}, {}});
            cerradura_.cerrar(de_.tablas);
        });
    }

    void borrar_copia() {
        const auto marca = a_.marca();
        if (!marca || (*marca)[1] != "llega") return;
        for (const TablaMovida& tabla : a_.tablas) borrar(a_, tabla);
        const std::int64_t desde = std::stoll(*(*marca)[2]);
        a_.en_lote([&] {
            if (desde > 0)
                a_.base->ejecutar("delete from ctdcomprad where comprobante_adjunto between " +
                                  std::to_string(desde + 1) + " and " +
                                  std::to_string(ultimo_conjunto(desde)));
            a_.base->ejecutar("delete from admtraslado" + a_.suya());
        });
    }

    std::int64_t ultimo_conjunto(std::int64_t desde) {
        return desde + mayor(de_, "comprobante_adjunto", "ctcquorvel" + de_.suya());
    }

    static std::int64_t mayor(Lado& lado, const std::string& columna, const std::string& tabla) {
        const std::string n = lado.base->consultar("select max(" + columna + ") from " + tabla)[0][0];
        return n.empty() ? 0 : std::stoll(n);
    }

    void borrar(Lado& lado, const TablaMovida& tabla) {
        for (const std::string& trozo : lado.trozos(tabla))
            lado.en_lote([&] {
                if (&lado == &de_) cerradura_.abrir({tabla});
                lado.base->ejecutar("delete from " + tabla.nombre + trozo);
                if (&lado == &de_) cerradura_.cerrar({tabla});
            });
    }

    void copiar() {
        a_.en_lote([&] {
            compartidos_.llevar(codigos_);
            codigos_.conjuntos = HOLGURA + std::max(mayor(a_, "comprobante_adjunto", "ctcquorvel"),
                                                    mayor(a_, "comprobante_adjunto", "ctdcomprad"));
            codigos_.correlativos = HOLGURA + mayor(a_, "correlativo", "ctdcomprad");
            const Celdas empresa = leer_filas(*de_.base, EMPRESAS, de_.suya()).front();
            a_.marcar({a_.empresa, "llega", std::to_string(codigos_.conjuntos),
                       std::to_string(codigos_.correlativos), empresa[1], empresa[2], empresa[3],
                       empresa[4]});
        });
        por_trozos("Copiando la empresa",
                   [&](const TablaMovida& tabla, const std::vector<Celdas>& filas, const std::string&) {
                       a_.en_lote([&] { escribir_filas(*a_.base, tabla, filas); });
                       hecho_.filas += static_cast<long>(filas.size());
                   });
        const auto adjuntos = con_codigos(ADJUNTOS, leer_filas(*de_.base, ADJUNTOS, de_.sus_adjuntos()));
        a_.en_lote([&] { escribir_filas(*a_.base, ADJUNTOS, adjuntos); });
        hecho_.filas += static_cast<long>(adjuntos.size());
        copiar_archivos();
    }

    std::vector<Celdas> con_codigos(const TablaMovida& tabla, std::vector<Celdas> filas) const {
        for (Celdas& fila : filas) fila = trasladada(tabla, std::move(fila), codigos_);
        return filas;
    }

    /// Every piece of every table, as it will stand where it arrives.
    template <class Hacer> void por_trozos(const char* que, Hacer&& hacer) {
        long hechas = 0;
        for (const TablaMovida& tabla : de_.tablas) {
            for (const std::string& trozo : de_.trozos(tabla))
                hacer(tabla, con_codigos(tabla, leer_filas(*de_.base, tabla, trozo)),
                      trozo.substr(de_.suya().size()));
            avance_(que, ++hechas, static_cast<long>(de_.tablas.size()));
        }
    }

    void copiar_archivos() {
        for (const Celdas& fila : leer_filas(*de_.base, ADJUNTOS, de_.sus_adjuntos())) {
            const std::string conjunto = *fila[0], nombre = *fila[2],
                              nuevo = *trasladada(ADJUNTOS, fila, codigos_)[0];
            const auto archivo = de_.adjuntos.find(conjunto, nombre);
            if (!archivo) {
                hecho_.faltan.push_back("Archivo adjunto que no está: conjunto " + conjunto + ", " + nombre);
                continue;
            }
            if (!a_.adjuntos.add(nuevo, *archivo) || a_.adjuntos.would_replace(nuevo, *archivo))
                throw std::runtime_error("No se pudo copiar el archivo adjunto " + archivo->string());
            ++hecho_.adjuntos;
        }
    }

    /// Reads both sides anew.
    void comparar() {
        const auto exigir = [](bool iguales, const TablaMovida& tabla) {
            if (!iguales)
                throw std::runtime_error(
                    "La copia de la tabla " + tabla.nombre +
                    " no es igual: la empresa sigue donde estaba. Repita el traslado o use --deshacer");
        };
        por_trozos("Comparando la copia", [&](const TablaMovida& tabla, std::vector<Celdas> filas,
                                              const std::string& trozo) {
            exigir(mismas_filas(std::move(filas), leer_filas(*a_.base, tabla, a_.suya() + trozo)), tabla);
        });
        for (const TablaMovida& tabla : de_.tablas) // nothing there beyond the pieces
            exigir(de_.base->consultar("select count(*) from " + tabla.nombre + de_.suya()) ==
                       a_.base->consultar("select count(*) from " + tabla.nombre + a_.suya()),
                   tabla);
        exigir(mismas_filas(con_codigos(ADJUNTOS, leer_filas(*de_.base, ADJUNTOS, de_.sus_adjuntos())),
                            leer_filas(*a_.base, ADJUNTOS, a_.sus_adjuntos())),
               ADJUNTOS);
    }

    /// From here on the company is where it arrived.
    void entregar() {
        de_.en_lote([&] {
            de_.base->ejecutar("delete from admempresa" + de_.suya());
            de_.marcar({de_.empresa, "sobra", "0", "0", {}, {}, {}, {}});
        });
        avance_("Entregando la empresa", 1, 1);
    }

    void recibir() {
        const auto marca = a_.marca();
        if (!marca || (*marca)[1] != "llega") return;
        a_.en_lote([&] {
            escribir_filas(*a_.base, EMPRESAS,
                           {{a_.empresa, (*marca)[4], (*marca)[5], (*marca)[6], (*marca)[7]}});
            a_.base->ejecutar("delete from admtraslado" + a_.suya());
        });
        avance_("Recibiendo la empresa", 1, 1);
    }

    void limpiar() {
        if (const auto marca = de_.marca(); !marca || (*marca)[1] != "sobra") return;
        for (const Celdas& fila : leer_filas(*de_.base, ADJUNTOS, de_.sus_adjuntos()))
            (void)de_.adjuntos.remove(*fila[0], *fila[2]);
        de_.en_lote([&] { de_.base->ejecutar("delete from ctdcomprad" + de_.sus_adjuntos()); });
        long hechas = 0;
        for (const TablaMovida& tabla : de_.tablas) {
            borrar(de_, tabla);
            avance_("Limpiando el origen", ++hechas, static_cast<long>(de_.tablas.size()));
        }
        de_.en_lote([&] {
            cerradura_.abrir(de_.tablas);
            de_.base->ejecutar("delete from admtraslado" + de_.suya());
        });
    }

    Lado de_, a_;
    Turno turno_;
    AvancePartes avance_;
    Compartidos compartidos_;
    Cerradura cerradura_;
    Codigos codigos_;
    Trasladado hecho_;
};

} // namespace

Trasladado trasladar(const PedidoTraslado& pedido, const AvancePartes& avance) {
    return Traslado(pedido, avance).ejecutar();
}

void deshacer_traslado(const PedidoTraslado& pedido) {
    Traslado(pedido, [](const std::string&, long, long) {}).deshacer();
}

} // namespace quorvel::dbtools
