#include "plain_writer.h"

#include <sqlite3.h>
#include <stdio.h>

static sqlite3* db;
static sqlite3_stmt *begin, *header, *issued, *old, *line, *commit;

static const char* ACCOUNTS[] = {"501001", "501002", "109001", "201001"};
static const char* PARTIES[] = {"", "", "", "000013"};
static const int DEBIT[] = {60000, 40000, 19000, 0};
static const int CREDIT[] = {0, 0, 0, 119000};

int plain_open(const char* path) {
    if (sqlite3_open(path, &db) != SQLITE_OK) return 1;
    sqlite3_exec(db, "pragma journal_mode=wal", 0, 0, 0);
    sqlite3_exec(db, "pragma synchronous=full", 0, 0, 0);
    sqlite3_exec(db, "pragma foreign_keys=on", 0, 0, 0);
    return sqlite3_prepare_v2(db, "begin immediate", -1, &begin, 0) ||
           sqlite3_prepare_v2(db,
                              "insert into ctcquorvel(empresa,subsistema,f_comp,documento,num_docum,moneda,"
                              "t_debe,t_haber,concepto,usuario,f_ult_modificacion,cotizacion,estado,libro,"
                              "doc_libro,num_ref,fecha_factura,fecha_pago,rut_persona,nombre,apertura,"
                              "monto_neto,monto_exento,codigo_otro_impuesto,tasa_impuesto_otro,activo_fijo,"
                              "codigo_no_recuperable,ifrs,comprobante_adjunto,nro_correlativo,"
                              "iva_activo_fijo) values (1,'01','2024-03-20','002',?1,'PS',119000,119000,"
                              "'Compra de materiales',1,'2024-06-15',1,'P','COMPRAS','FACTURA',?2,"
                              "'2024-03-20',null,'76.418.352-5 ','FERRETERIA EL ROBLE SPA ','0',100000,0,'',"
                              "'','0','','0',?3,1,0)",
                              -1, &header, 0) ||
           sqlite3_prepare_v2(db,
                              "update adxemp_doc set ultimo_emitido=?1, f_u_emision='2024-06-15' where "
                              "empresa=1 and documento='002'",
                              -1, &issued, 0) ||
           sqlite3_prepare_v2(db,
                              "delete from ctdquorvel where empresa=1 and subsistema='01' and "
                              "f_comp='2024-03-20' and documento='002' and num_docum=?1",
                              -1, &old, 0) ||
           sqlite3_prepare_v2(db,
                              "insert into ctdquorvel values (1,'01','2024-03-20','002',?1,?2,?3,?4,?5,?6,"
                              "'Compra de materiales','','','','','')",
                              -1, &line, 0) ||
           sqlite3_prepare_v2(db, "commit", -1, &commit, 0);
}

static int run(sqlite3_stmt* s) {
    const int code = sqlite3_step(s);
    sqlite3_reset(s);
    return code != SQLITE_DONE;
}

int plain_save(int number) {
    char text[16], ref[24];
    const int length = snprintf(text, sizeof text, "%d", number);
    snprintf(ref, sizeof ref, "9%d ", number);
    int failed = run(begin);
    sqlite3_bind_text(header, 1, text, length, SQLITE_STATIC);
    sqlite3_bind_text(header, 2, ref, -1, SQLITE_STATIC);
    sqlite3_bind_int(header, 3, number);
    failed |= run(header);
    sqlite3_bind_text(issued, 1, text, length, SQLITE_STATIC);
    failed |= run(issued);
    sqlite3_bind_text(old, 1, text, length, SQLITE_STATIC);
    failed |= run(old);
    sqlite3_bind_text(line, 1, text, length, SQLITE_STATIC);
    for (int i = 0; i < 4; ++i) {
        sqlite3_bind_int(line, 2, i + 1);
        sqlite3_bind_text(line, 3, ACCOUNTS[i], -1, SQLITE_STATIC);
        sqlite3_bind_text(line, 4, PARTIES[i], -1, SQLITE_STATIC);
        sqlite3_bind_int(line, 5, DEBIT[i]);
        sqlite3_bind_int(line, 6, CREDIT[i]);
        failed |= run(line);
    }
    return failed | run(commit);
}

void plain_close(void) {
    sqlite3_stmt* all[] = {begin, header, issued, old, line, commit};
    for (int i = 0; i < 6; ++i) sqlite3_finalize(all[i]);
    sqlite3_close(db);
}
