#pragma once
#include "apoyo/sesiones.h"
#include "dbtools/base.h"

namespace quorvel::apoyo {

/// While it lives, an event on a table ("insert on ctdquorvel", "update of estado on ctcquorvel") fails with
/// "falla pedida"; with "commit on TABLE" the insert, update or delete goes through and the commit fails.
class Falla {
public:
    Falla(const std::string& conexion, Motor motor, const std::string& evento)
        : base_(dbtools::abrir_base(conexion, dbtools::Abrir::existente)),
          tabla_(evento.substr(evento.find(" on ") + 4)) {
        const bool al_final = evento.starts_with("commit");
        if (motor == Motor::sqlite) {
            base_->ejecutar(al_final
                                ? "create table falla_padre(id integer primary key); create table falla_hija("
                                  "id integer references falla_padre(id) deferrable initially deferred); "
                                  "create trigger falla after delete on " +
                                      tabla_ + " begin insert into falla_hija values (9); end"
                                : "create trigger falla before " + evento +
                                      " begin select raise(abort, 'falla pedida'); end");
            quitar_ = al_final ? "drop trigger falla; drop table falla_hija; drop table falla_padre"
                               : "drop trigger falla";
            return;
        }
        base_->ejecutar("create function falla() returns trigger language plpgsql as 'begin raise exception "
                        "''falla pedida''; end'; " +
                        (al_final ? "create constraint trigger falla after delete on " + tabla_ +
                                        " deferrable initially deferred"
                                  : "create trigger falla before " + evento) +
                        " for each row execute function falla()");
        quitar_ = "drop trigger falla on " + tabla_ + "; drop function falla()";
    }
    ~Falla() { base_->ejecutar(quitar_); }
    Falla(const Falla&) = delete;
    Falla& operator=(const Falla&) = delete;

private:
    std::unique_ptr<dbtools::Base> base_;
    std::string tabla_, quitar_;
};

} // namespace quorvel::apoyo
