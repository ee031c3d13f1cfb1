#pragma once
#include <string>

namespace quorvel {

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

} // namespace quorvel
