#pragma once
#include <functional>
#include <string>

namespace quorvel::dbtools {

/// A bar on the terminal's last line; nothing at all where the error output is no terminal.
class BarraAvance {
public:
    BarraAvance(std::string que, long total);
    ~BarraAvance();
    BarraAvance(const BarraAvance&) = delete;
    BarraAvance& operator=(const BarraAvance&) = delete;
    void mostrar(long hechas);

private:
    std::string que_;
    long total_;
    int mostrado_ = -1; ///< percent
    bool terminal_;
};

/// Hears how far a long work of several parts is: the part's name, what is done of it and the whole of it.
using AvancePartes = std::function<void(const std::string& que, long hechas, long total)>;
/// A bar for each part in turn.
[[nodiscard]] AvancePartes avance_en_terminal();

} // namespace quorvel::dbtools
