#pragma once
#include "registro/contabilizar.h"
#include "registro/leer.h"
#include "registro/prueba.h"

#include <functional>

namespace quorvel::registro {

/// A counterpart for whose rows an account or an auxiliary is missing.
struct Desconocida {
    int libro = 0;
    std::string rut, nombre;
    std::size_t documentos = 0;
    Propuesta propuesta; ///< what is known already
};
/// How a booking ended.
struct Balance {
    std::size_t contabilizados = 0, rechazados = 0;
    bool cancelado = false;
    std::string error; ///< what ended it early, other than the person
};

/// The inbox of a month: files of the register held against the books, with what each row becomes. Window,
/// command line and scripts work on it alike.
class Bandeja {
public:
    Bandeja(clsConexion& db, int empresa, int usuario, Fecha hoy);
    /// Adds a file, of the register or of electronic documents; one of the same name takes the other's place.
    /// @throws ErrorRegistro
    void agregar(const std::string& nombre, std::string_view bytes);
    void vaciar();
    /// Holds the files against the books as they are now; marks stay, and so do the reasons why the checks
    /// refused what is still new. @throws ErrorSesion
    void cotejar();
    /// Month of the register: what is registered counts in it.
    void poner_mes(Mes mes) { mes_ = mes; }
    [[nodiscard]] Mes mes() const { return mes_; }
    /// Voucher kind of a book's new vouchers; the book's usual one unless it is set.
    void poner_documento(const std::string& documento) { documento_ = documento; }
    [[nodiscard]] std::string documento(int libro) const;

    [[nodiscard]] const std::vector<Archivo>& archivos() const { return archivos_; }
    [[nodiscard]] const std::vector<Fila>& filas() const { return filas_; }
    [[nodiscard]] const std::vector<LineaPrueba>& prueba() const { return prueba_; }
    /// "nuevo: 2, contabilizado: 1": states with how many rows each has, or "sin documentos".
    [[nodiscard]] std::string resumen() const;
    /// What a person should know of the files: another company's, another month's. One line each.
    [[nodiscard]] std::vector<std::string> avisos() const;
    [[nodiscard]] const Propuesta& propuesta(const Fila& f) const;
    /// What a new row lacks: "cuenta", "auxiliar" or nothing.
    [[nodiscard]] std::string le_falta(const Fila& f) const;

    [[nodiscard]] bool marcable(std::size_t fila) const { return filas_.at(fila).estado == Estado::nuevo; }
    [[nodiscard]] bool marcada(std::size_t fila) const { return marcas_.at(fila); }
    void marcar(std::size_t fila, bool si);
    /// Marks every new row that is registered. @return how many
    std::size_t marcar_nuevos();
    [[nodiscard]] std::size_t marcados() const;

    /// Counterparts of marked rows that lack something, each once.
    [[nodiscard]] std::vector<Desconocida> desconocidas() const;
    /// Takes what the person gave for a counterpart into each of its rows that lacks it.
    void completar(const Desconocida& d);
    /// An auxiliary for every one of them that has none. @return how many were made @throws ErrorSesion
    std::size_t generar_auxiliares(std::vector<Desconocida>& lista);

    /// Books the marked rows, each in a transaction of its own. What is booked stays so whatever ends it.
    /// @param avance asked before each; false stops
    /// @param grabar false only tells what the checks would say; marks stay then
    Balance contabilizar(const std::function<bool(long hechos, long total)>& avance, bool grabar = true);
    /// The unnumbered voucher of a row, for the screen.
    [[nodiscard]] Comprobante comprobante(const Fila& f) const;

private:
    [[nodiscard]] std::vector<int> completos() const;
    [[nodiscard]] Contabilidad contabilidad(int libro) const;
    [[nodiscard]] Contabilizado uno(const Contabilidad& k, Maestros& maestros, const Fila& f,
                                    bool grabar) const;

    Contabilidad base_;
    std::string documento_, rut_empresa_;
    std::map<int, std::string> habituales_;
    Mes mes_;
    std::vector<Archivo> archivos_;
    Libros libros_;
    std::vector<Fila> filas_;
    std::vector<bool> marcas_;
    std::vector<LineaPrueba> prueba_;
    Propuestas propuestas_;
    std::map<std::string, Propuesta> dadas_; ///< by the person: book and RUT
};

} // namespace quorvel::registro
