#pragma once
#include "screen/asistentes/partes.h"
#include "voucher/comprobante.h"

#include <map>
#include <span>
#include <vector>

namespace quorvel {

/// The foot of a dialog: the lines that accepting would make, one a row in three columns of text.
class PieLineas {
public:
    PieLineas(ui::Label& cuentas, ui::Label& debe, ui::Label& haber)
        : cuentas_(cuentas), debe_(debe), haber_(haber) {}
    /// While something is missing the foot tells that instead.
    void mostrar(const SesionAsistente& s, std::span<const Exigencia> exigencias,
                 const std::function<std::vector<Linea>()>& lineas);

private:
    [[nodiscard]] const std::string& nombre(Recordset& cuentas, const std::string& codigo);
    ui::Label &cuentas_, &debe_, &haber_;
    std::map<std::string, std::string> nombres_; ///< each account is looked up once
};

} // namespace quorvel
