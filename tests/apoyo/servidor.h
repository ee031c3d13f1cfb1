#pragma once
#include <filesystem>
#include <string>

namespace quorvel::apoyo {

/// Options of a server that need not survive a power cut.
inline constexpr const char* SIN_DURAR = "-F -c shared_buffers=32MB";

/// A PostgreSQL server of this process' own: temporary folder, loopback, stopped at the end of its life.
class Servidor {
public:
    /// @throws std::runtime_error when it cannot be started
    explicit Servidor(const std::string& opciones = SIN_DURAR);
    /// A standby that follows another one. That one confirms nothing from now on that is not here as well.
    explicit Servidor(Servidor& principal, const std::string& opciones = SIN_DURAR);
    ~Servidor();
    Servidor(const Servidor&) = delete;
    Servidor& operator=(const Servidor&) = delete;

    /// A fresh database. @param modelo a database that nobody uses and that it copies
    /// @return its "postgresql://…" text
    std::string nueva(const std::string& modelo = "template1");
    /// Runs a statement outside of the vouchers' databases. @return its first cell
    std::string administrar(const std::string& sql) const;
    /// From now on each commit waits until a standby of this name, "*" for any, has it as well.
    void confirmar_con(const std::string& reserva) const;
    /// Ends it as a power cut does. Returns when nothing of it lives.
    void caer();
    /// Starts it again. @param mas further options
    void levantar(const std::string& mas = "");
    /// How a server that fell comes back behind the one that took its place.
    enum class Regreso { rebobinado, copia };
    /// Follows that one from now on, without whatever it alone had.
    void seguir(Servidor& principal, Regreso como);
    /// The standby becomes a server that can be written.
    void promover();
    [[nodiscard]] std::string conexion(const std::string& base) const;
    [[nodiscard]] int puerto() const { return puerto_; }

private:
    [[nodiscard]] std::string datos() const { return (carpeta_ / "datos").string(); }
    [[nodiscard]] std::string pg_ctl(const std::string& orden) const;
    [[nodiscard]] std::string copia_de(const Servidor& principal) const;
    void esperar_reserva() const;
    void arrancar(const std::string& crear);
    void vigilar() const;

    std::string opciones_;
    std::filesystem::path bin_, carpeta_;
    int puerto_ = 0, bases_ = 0;
};

/// A port of the loopback that nobody listens on. @throws std::runtime_error
[[nodiscard]] int puerto_libre();

} // namespace quorvel::apoyo
