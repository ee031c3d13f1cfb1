#pragma once
#include <sys/resource.h>

#include <csignal>
#include <string>

namespace quorvel::apoyo {

/// While it lives no file of this process grows beyond so many bytes: a write stops half way, as on a full
/// disk.
class ArchivosCortos {
public:
    explicit ArchivosCortos(unsigned long bytes);
    ~ArchivosCortos();
    ArchivosCortos(const ArchivosCortos&) = delete;
    ArchivosCortos& operator=(const ArchivosCortos&) = delete;

private:
    rlimit antes_{};
    void (*senal_)(int);
};

/// While it lives this process may do what anybody may, for whom permissions bind.
class Cualquiera {
public:
    Cualquiera();
    ~Cualquiera();
    Cualquiera(const Cualquiera&) = delete;
    Cualquiera& operator=(const Cualquiera&) = delete;

private:
    unsigned antes_;
};

/// A small disk of its own, in memory.
class DiscoChico {
public:
    DiscoChico();
    ~DiscoChico();
    DiscoChico(const DiscoChico&) = delete;
    DiscoChico& operator=(const DiscoChico&) = delete;
    /// Empty where this process may not mount anything; motivo() says why.
    [[nodiscard]] const std::string& ruta() const { return ruta_; }
    [[nodiscard]] const std::string& motivo() const { return motivo_; }
    void llenar() const; ///< to the last byte
    void vaciar() const;

private:
    std::string ruta_, motivo_;
};

} // namespace quorvel::apoyo
