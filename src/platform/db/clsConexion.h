#pragma once
#include "text/fecha.h"
#include "text/numeros.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace quorvel {

/// A refused query or a lost session: what() is the engine's own description.
class ErrorSesion : public std::runtime_error {
public:
    ErrorSesion(const std::string& descripcion, std::string sql, std::string sqlstate = {})
        : std::runtime_error(descripcion), sql(std::move(sql)), sqlstate(std::move(sqlstate)) {}
    std::string sql, sqlstate;
};

/// Not the statement was refused: the connection, the disk or the database file itself failed.
class SesionFallida : public ErrorSesion {
public:
    using ErrorSesion::ErrorSesion;
};

/// The connection was lost while a commit waited for its answer: what() tells so, the database knows the
/// rest.
class CommitSinRespuesta : public ErrorSesion {
public:
    using ErrorSesion::ErrorSesion;
};

/// A field's value: null, a whole number, a number with decimals or a text. Dates are texts "yyyy-mm-dd".
class Value {
public:
    Value() = default;
    Value(std::int64_t n) : v_(n) {}           // NOLINT: engines hand values over as they are
    Value(double n) : v_(n) {}                 // NOLINT
    Value(std::string t) : v_(std::move(t)) {} // NOLINT
    [[nodiscard]] bool null() const { return std::holds_alternative<std::monostate>(v_); }
    [[nodiscard]] bool is_text() const { return std::holds_alternative<std::string>(v_); }
    [[nodiscard]] bool is_integer() const { return std::holds_alternative<std::int64_t>(v_); }
    [[nodiscard]] bool is_double() const { return std::holds_alternative<double>(v_); }
    /// Null is ''; numbers are plain digits with "." as decimal mark.
    [[nodiscard]] std::string text() const;
    /// Null is 0; the leading digits of a text count.
    [[nodiscard]] std::int64_t integer() const;
    /// Null is 0.
    [[nodiscard]] double number() const;
    /// The same, exactly: six decimals.
    [[nodiscard]] Decimal decimal() const;
    /// The date of an ISO text; nothing for null.
    [[nodiscard]] std::optional<Fecha> date() const;

private:
    std::variant<std::monostate, std::int64_t, double, std::string> v_;
};

/// What a column of a result holds, as far as its declaration tells.
enum class ColumnKind { text, number, date };
struct ColumnInfo {
    std::string name; ///< folded to lower case, accents included
    ColumnKind kind = ColumnKind::text;
};

/// Rows of one query. Lazy: a recordset that is only searched with FindFirst never reads its rows.
class Recordset {
public:
    struct Field {
        quorvel::Value Value;
    };
    virtual ~Recordset() = default;
    /// The named column of the current row; case and accents' case do not matter, the first of two columns
    /// with one name counts. @throws std::out_of_range for an unknown name or without a current row.
    [[nodiscard]] virtual Field fields(std::string_view name) = 0;
    /// True when there is no current row (the macro EOF is why the name is small).
    [[nodiscard]] virtual bool eof() = 0;
    virtual void MoveNext() = 0;
    /// Searches the whole recordset, answered by a point query on its text. @param criteria "centro='1101'"
    virtual void FindFirst(const std::string& criteria) = 0;
    [[nodiscard]] virtual bool nomatch() const = 0;
    /// Columns in the order of the query.
    [[nodiscard]] virtual const std::vector<ColumnInfo>& columns() = 0;
    /// The i-th column of the current row.
    [[nodiscard]] virtual Value at(std::size_t i) = 0;
};

/// The host's database session. One thread only: the host's user-interface thread.
/// Statements are complete SQL texts in the module's own dialect: dates #mm/dd/yyyy#, year() month() day()
/// len() val(), select top 1, select … into, sha256_hex() of a text, utc_now() "yyyy-mm-dd hh:mm:ss",
/// json_array() and json_group_array(); text equality ignores trailing blanks. One statement a call.
class clsConexion {
public:
    virtual ~clsConexion() = default;
    /// Runs a query; the recordset stands on its first row or at its end.
    /// @throws ErrorSesion when the engine refuses it
    [[nodiscard]] virtual std::unique_ptr<Recordset> NewRecord(const std::string& sql) = 0;
    /// Runs a statement without rows. @return 1 done (also when it changed no row), 0 refused; never raises
    /// for a refused statement, which leaves an open transaction usable.
    virtual int executesql(const std::string& sql) = 0;
    /// Runs the statements in their order up to the first refused one; a server gets them all at once.
    /// @return the rows changed by each; when one was refused, as many numbers as went through before it
    [[nodiscard]] virtual std::vector<std::int64_t> executesql_each(std::span<const std::string> sql) {
        std::vector<std::int64_t> rows;
        for (const std::string& one : sql) {
            if (executesql(one) == 0) break;
            rows.push_back(rows_affected());
        }
        return rows;
    }
    virtual void BeginTrans() = 0;
    /// The same for a change that its first refused statement ends: only rollback goes through after it. A
    /// server then needs no guard around each statement.
    virtual void begin_strict() { BeginTrans(); }
    /// Takes hold of a number until the transaction ends, without waiting. Sessions that hold different
    /// numbers never meet. @return false: another session has it
    [[nodiscard]] virtual bool reserve(std::int64_t /*number*/) { return true; }
    /// @throws CommitSinRespuesta when nobody knows whether it was done; ErrorSesion when it was not
    virtual void CommitTrans() = 0;
    virtual void rollback() = 0;
    /// 2 selects the file-database dialect of the numbering queries.
    [[nodiscard]] virtual int TypeDB() const = 0;
    /// All rows of a query arrive before the first is read.
    [[nodiscard]] virtual bool sends_whole_results() const { return false; }
    /// What select … into makes lives inside a transaction only, and no longer than it.
    [[nodiscard]] virtual bool work_tables_end_with_transaction() const { return false; }
    /// Path of the database file, or connection text of a server.
    [[nodiscard]] virtual std::string Name() const = 0;
    /// The engine's description of the last refused statement, empty when none was.
    [[nodiscard]] virtual std::string last_error() const = 0;
    /// That statement was no bad one: the session itself failed (SesionFallida).
    [[nodiscard]] virtual bool session_failed() const { return false; }
    /// Whether the database has a table of this name; one that is there is asked for once. @throws
    /// ErrorSesion
    [[nodiscard]] bool has_table(const std::string& name);
    /// Rows that the last successful executesql changed.
    [[nodiscard]] virtual std::int64_t rows_affected() const = 0;
    /// Has `go_on` asked while a statement keeps the caller waiting, until it is set again; an empty function
    /// ends that. Where it answers false the statement is interrupted and fails like a refused one. It must
    /// not use the session and not throw. A session that cannot do it never asks.
    virtual void while_waiting(std::function<bool()> go_on) { (void)go_on; }

private:
    std::set<std::string> tables_;
};

/// @throws ErrorSesion
[[nodiscard]] inline bool has_rows(clsConexion& db, const std::string& sql) {
    return !db.NewRecord(sql)->eof();
}

/// Runs work that only reads, with `go_on` asked while the engine keeps it waiting.
/// @return false when `go_on` ended it @throws whatever the work throws for another reason
template <class Work> bool interruptible(clsConexion& db, const std::function<bool()>& go_on, Work&& work) {
    if (!go_on) return work(), true;
    struct Quiet {
        clsConexion& db;
        ~Quiet() { db.while_waiting({}); }
    } const quiet{db};
    bool ended = false;
    db.while_waiting([&] { return !ended && !(ended = !go_on()); });
    try {
        work();
    } catch (const ErrorSesion&) {
        if (!ended) throw;
    }
    return !ended;
}

/// A change that is made whole: its first refused statement ends it, and it is rolled back unless confirmed.
class Transaccion {
public:
    explicit Transaccion(clsConexion& db) : db_(db) { db_.begin_strict(); }
    ~Transaccion() {
        if (abierta_) try {
                db_.rollback();
            } catch (...) { // a lost session has rolled back already
            }
    }
    Transaccion(const Transaccion&) = delete;
    Transaccion& operator=(const Transaccion&) = delete;
    void confirmar() {
        abierta_ = false; // a failed commit has ended the transaction
        db_.CommitTrans();
    }

private:
    clsConexion& db_;
    bool abierta_ = true;
};

/// Opens a session from a connection text: "sqlite:PATH" or "postgresql://…". Defined by the engines'
/// library.
/// @throws ErrorSesion with a Spanish description for the user
/// A missing SQLite file is an error, so that a mistyped path does not become an empty database; "?create=1"
/// behind the path creates it.
[[nodiscard]] std::unique_ptr<clsConexion> abrir_sesion(const std::string& conexion);
/// The same for a database that is to be created: a missing SQLite file is made.
/// @throws ErrorSesion with a Spanish description for the user
[[nodiscard]] std::unique_ptr<clsConexion> crear_sesion(const std::string& conexion);
/// The user's own report database, created when missing. Report files stand beside it, so its file name must
/// have eight characters ("print.db"). @param ruta plain path, "sqlite:" in front is allowed
[[nodiscard]] std::unique_ptr<clsConexion> abrir_sesion_informes(const std::string& ruta);

} // namespace quorvel
