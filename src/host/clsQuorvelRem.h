#pragma once
#include "host/objeto_host.h"

namespace quorvel {

/// Another module prepares a voucher: LoadForm, lines, gstrconcepto, ShowForm, UnloadForm.
class clsQuorvelRem : public ObjetoHost {
public:
    /// Puts the concept into the voucher, selects the book "CONTABLES" and returns when the user has closed
    /// the screen.
    virtual Estado ShowForm() = 0;
    /// Appends a line and adds its amounts to the totals. Amounts are displayed texts.
    virtual Estado grd_agregar(const std::string& strcuenta, const std::string& strauxiliar,
                               const std::string& strvalordebe, const std::string& strvalorhaber,
                               const std::string& strglosa) = 0;
    /// Removes all lines and leaves both totals as they were; the parameters do not matter.
    virtual Estado grd_borrar(const std::string& strcuenta, const std::string& strauxiliar,
                              const std::string& strvalordebe, const std::string& strvalorhaber,
                              const std::string& strglosa) = 0;
    /// @return E_PENDING while the screen still ends what it was doing
    virtual Estado UnloadForm() = 0;
    /// Hands the session over and loads the screen without showing it.
    virtual Estado LoadForm() = 0;
    virtual Estado get_gstrconcepto(std::string* valor) = 0;
    virtual Estado let_gstrconcepto(const std::string& valor) = 0;
};

} // namespace quorvel
