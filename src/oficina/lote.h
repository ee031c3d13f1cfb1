#pragma once
#include "oficina/armar.h"
#include "oficina/oficina.h"
#include "voucher/configuracion.h"
#include "voucher/validar.h"

#include <map>
#include <optional>

namespace quorvel::oficina {

/// A voucher of a batch, as it stands in its file.
struct EnLote {
    std::string archivo;
    Clave clave;
    std::string numero_archivo; ///< the file's own number, when another one is given instead
    std::size_t lineas = 0;
    std::string total;
};

/// Voucher files that go into the books together or not at all. The checks are those of the screen.
class LoteArchivos {
public:
    /// @param renumerar gives the next free number where one is missing or taken
    LoteArchivos(Oficina& oficina, Fecha hoy, bool renumerar);
    /// Reads and checks every file and what the files say of each other; writes nothing.
    /// @throws ErrorSesion
    void revisar(const std::vector<std::string>& archivos);
    /// Saves all of them in one transaction, each checked again inside it; stops at the first problem and
    /// then leaves nothing. @throws ErrorSesion, std::runtime_error
    void grabar();
    [[nodiscard]] const std::vector<Problema>& problemas() const { return problemas_; }
    [[nodiscard]] const std::vector<EnLote>& comprobantes() const { return comprobantes_; }

private:
    using Numeracion = std::pair<std::string, int>; // document kind and year
    void recorrer(const char* que, std::size_t cuantos,
                  const std::function<void(std::size_t, const Avance&)>& uno);
    void leer_numeros(const std::vector<std::string>& archivos);
    [[nodiscard]] std::optional<Comprobante> leer(const std::string& archivo, const Avance& avance);
    void revisar_uno(const std::string& archivo, const Avance& avance);
    void grabar_uno(const EnLote& e, const Avance& avance);
    [[nodiscard]] bool ocupado(const Comprobante& c);
    void numerar(EnLote& e, Comprobante& c);
    void comparar_con_los_demas(const EnLote& e, const Comprobante& c);
    void validar(const std::string& archivo, const Comprobante& c);
    [[nodiscard]] bool consecuencia(const ProblemaArchivo& p) const;
    void anotar(const std::string& archivo, const ProblemaArchivo& p);

    Oficina& oficina_;
    const Fecha hoy_;
    const bool renumerar_;
    const std::string grupo_;
    const Listas listas_;
    const Configuracion config_;
    Maestros maestros_;
    std::vector<Problema> problemas_;
    std::vector<EnLote> comprobantes_;
    std::vector<ProblemaArchivo> de_lectura_;   ///< of the file at hand: what merely follows is not told
    std::map<std::string, std::string> vistos_; ///< voucher to file
    std::map<DocumentoReferido, std::string> referidos_; ///< referred document to file
    std::map<Numeracion, std::int64_t> ultimos_;
};

} // namespace quorvel::oficina
