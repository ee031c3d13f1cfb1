#pragma once
#include <memory>
#include <string>
#include <vector>

namespace quorvel::dbtools {

/// A connection for the tools that look after the database itself: the engine's own SQL, whole scripts, rows
/// of texts. The vouchers' statements never pass here.
class Base {
public:
    using Filas = std::vector<std::vector<std::string>>;
    virtual ~Base() = default;
    /// Runs every statement of a script, in the engine's own dialect.
    /// @throws ErrorSesion with the engine's description
    virtual void ejecutar(const std::string& guion) = 0;
    /// Rows of one query; null reads ''. @throws ErrorSesion
    [[nodiscard]] virtual Filas consultar(const std::string& sql) = 0;
    /// "sqlite" or "postgres": the name of the engine's schema file.
    [[nodiscard]] virtual std::string motor() const = 0;
    /// Rows (table, column) of every table of the database.
    [[nodiscard]] virtual Filas columnas() = 0;
    /// Rows (table, column) of every column that refuses null and is no part of a primary key.
    [[nodiscard]] virtual Filas obligatorias() = 0;
    /// From now on these columns of a table may be null; their rows stay as they are. All or nothing.
    /// @throws ErrorSesion
    virtual void relajar(const std::string& tabla, const std::vector<std::string>& columnas) = 0;
    /// Rows (name) of every index of the database.
    [[nodiscard]] virtual Filas indices() = 0;
};

/// Whether an embedded database that does not exist may come into being.
enum class Abrir { existente, crear };

/// @param conexion "sqlite:PATH", a plain path or "postgresql://…"
/// @throws ErrorSesion
[[nodiscard]] std::unique_ptr<Base> abrir_base(const std::string& conexion, Abrir modo);
/// "sqlite:PATH" for a plain path, without a session's options behind "?"; server texts come back as they
/// are.
[[nodiscard]] std::string normalizar_conexion(const std::string& conexion);

/// All or nothing: what was run since is undone unless confirmed.
class Lote {
public:
    explicit Lote(Base& base) : base_(base) {
        // an embedded database refuses who has read and then wants to write after somebody else has
        base_.ejecutar(base_.motor() == "sqlite" ? "begin immediate" : "begin");
    }
    ~Lote() {
        if (abierto_) try {
                base_.ejecutar("rollback");
            } catch (...) { // the connection is gone and the changes with it
            }
    }
    Lote(const Lote&) = delete;
    Lote& operator=(const Lote&) = delete;
    void confirmar() {
        base_.ejecutar("commit");
        abierto_ = false;
    }

private:
    Base& base_;
    bool abierto_ = true;
};

} // namespace quorvel::dbtools
