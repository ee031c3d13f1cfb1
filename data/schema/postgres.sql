-- Accounting database on PostgreSQL. Text columns are bpchar without length: stored as written, compared
-- without their trailing blanks; amounts are whole pesos.

-- Host: companies and users

create table admempresa (
    empresa   integer not null primary key,
    n_empresa bpchar not null,
    rut       bpchar not null default '',
    direccion bpchar not null default '',
    giro      bpchar not null default ''
);

create table admusuario (
    usuario   integer not null primary key,
    n_usuario bpchar not null,
    alias     integer not null default 1, -- 2: sees only the vouchers written last by this user
    permiso   bpchar not null default '11111'
);

-- Vouchers. What another program leaves null counts as empty, or as 0; keys, debits and credits are never null.

create table ctcquorvel (
    empresa               integer not null,
    subsistema            bpchar not null default '01',
    f_comp                date not null,
    documento             bpchar not null,
    num_docum             bpchar not null,
    moneda                bpchar default '',
    t_debe                bigint not null default 0,
    t_haber               bigint not null default 0,
    concepto              bpchar default '',
    usuario               integer not null default 0,
    f_ult_modificacion    date,
    cotizacion            numeric not null default 1,
    estado                bpchar not null default 'P',
    libro                 bpchar default '',
    doc_libro             bpchar default '',
    num_ref               bpchar default '',
    fecha_factura         date,
    fecha_pago            date,
    rut_persona           bpchar default '',
    nombre                bpchar default '',
    apertura              bpchar default '0',
    monto_neto            bigint default 0,
    monto_exento          bigint default 0,
    codigo_otro_impuesto  bpchar default '',
    tasa_impuesto_otro    bpchar default '',
    activo_fijo           bpchar default '0',
    codigo_no_recuperable bpchar default '',
    ifrs                  bpchar default '0',
    comprobante_adjunto   integer default 0,
    nro_correlativo       integer default 0,
    iva_activo_fijo       bigint default 0,
    bloqueo_usuario       integer default 0,
    -- null means that the voucher has no cheque: these never get a default
    cheque                bpchar,
    banco                 bpchar,
    cuenta                bpchar,
    fecha_cheque          date,
    beneficiario          bpchar,
    nominativo            integer,
    cruzado               integer
);

create unique index ctcquorvel_clave on ctcquorvel (empresa, f_comp, documento, num_docum);
-- next voucher number of a kind and year
create index ctcquorvel_numero on ctcquorvel (empresa, documento, (extract(year from f_comp)::integer), ((substring((num_docum)::text from '^ *[-+]?[0-9]{1,18}'))::bigint));
-- next correlative of a book and month; search by book
create index ctcquorvel_correlativo on ctcquorvel (empresa, libro, (extract(year from f_comp)::integer), (extract(month from f_comp)::integer), nro_correlativo);
-- search by counterpart in the order of the list
create index ctcquorvel_contraparte on ctcquorvel (rut_persona, empresa, f_comp, documento, num_docum);
-- list of counterparts
create index ctcquorvel_nombre on ctcquorvel (nombre, rut_persona);
-- duplicate document, search by document number
create index ctcquorvel_referencia on ctcquorvel (empresa, num_ref, rut_persona);
create index ctcquorvel_bloqueo on ctcquorvel (empresa, bloqueo_usuario);
create index ctcquorvel_adjunto on ctcquorvel (comprobante_adjunto);
-- list of bank accounts and next cheque; few vouchers carry a cheque
create index ctcquorvel_cheque on ctcquorvel (banco, cuenta, cheque) where cuenta is not null;

create table ctdquorvel (
    empresa              integer not null,
    subsistema           bpchar not null default '01',
    f_comp               date not null,
    documento            bpchar not null,
    num_docum            bpchar not null,
    secuencia            integer not null,
    centro               bpchar not null,
    auxiliar             bpchar default '',
    debe_nacional        bigint not null default 0,
    haber_nacional       bigint not null default 0,
    glosa                bpchar default '',
    centro2              bpchar default '',
    conciliado           bpchar default '',
    num_ref              bpchar default '',
    codigo_otro_impuesto bpchar default '',
    tasa_impuesto_otro   bpchar default '',
    primary key (empresa, f_comp, documento, num_docum, secuencia)
);

-- sums of a year per account and auxiliary without touching the lines themselves
create index ctdquorvel_sumas on ctdquorvel (empresa, f_comp, centro, auxiliar)
    include (debe_nacional, haber_nacional, subsistema, documento, num_docum, num_ref);

create table ctdcomprad (
    comprobante_adjunto integer not null,
    correlativo         integer not null,
    nombre              bpchar not null default ''
);

create index ctdcomprad_conjunto on ctdcomprad (comprobante_adjunto, correlativo);
create index ctdcomprad_correlativo on ctdcomprad (correlativo);

-- Configuration

create table ctmconfigu (
    empresa                integer not null,
    anio                   integer not null,
    f_digi_inicial         date,
    f_digi_final           date,
    f_comp_cierre          date,
    documento_cierre       bpchar,
    num_docum_cierre       bpchar,
    factura_cobrar         bpchar,
    boleta_cobrar          bpchar,
    factura_pagar          bpchar,
    boleta_pagar           bpchar,
    iva                    bpchar,
    otros_impuestos        bpchar,
    iva_compra             bpchar,
    otros_impuestos_compra bpchar,
    honorarios_pagar       bpchar,
    retencion_seg_cat      bpchar,
    elaborado              bpchar,
    revisado               bpchar,
    aprobado               bpchar,
    centro_gan             bpchar,
    centro_per             bpchar,
    primary key (empresa, anio)
);

create table admdocumen (
    documento   bpchar not null primary key,
    n_documento bpchar not null default ''
);

create table adxdoc_sub (
    subsistema bpchar not null,
    documento  bpchar not null,
    primary key (subsistema, documento)
);

create table adxemp_doc (
    empresa        integer not null,
    documento      bpchar not null,
    ultimo_emitido bpchar not null default '0',
    f_u_emision    date,
    primary key (empresa, documento)
);

create table admsubsist (
    subsistema   bpchar not null primary key,
    n_subsistema bpchar not null default ''
);

create table admmonedas (
    moneda   bpchar not null primary key,
    n_moneda bpchar not null default ''
);

create table ctmotroimp (
    otro_impuesto bpchar not null primary key,
    descripcion   bpchar not null default '',
    tasa          numeric not null default 0
);

-- Chart of accounts and cost centres

create table ctmgcuenta (
    g_cuenta       bpchar not null primary key,
    n_g_cuenta     bpchar not null default '',
    transitorio    bpchar not null default '0',
    formato_centro bpchar not null default '9.99.999',
    num_nivel      integer not null default 3,
    longitud       integer not null default 6
);

create table ctmcentros (
    centro       bpchar not null primary key,
    n_centro     bpchar not null default '',
    g_cuenta     bpchar not null default '',
    activo       bpchar not null default '1',
    req_auxiliar bpchar not null default '0'
);

create index ctmcentros_grupo on ctmcentros (g_cuenta, centro);

create table ctmgcuentc (
    g_cuenta       bpchar not null primary key,
    n_g_cuenta     bpchar not null default '',
    transitorio    bpchar not null default '0',
    formato_centro bpchar not null default '9.99.999',
    num_nivel      integer not null default 3,
    longitud       integer not null default 6
);

create table ctmcentroc (
    centro       bpchar not null primary key,
    n_centro     bpchar not null default '',
    g_cuenta     bpchar not null default '',
    activo       bpchar not null default '1',
    req_auxiliar bpchar not null default '0'
);

create index ctmcentroc_grupo on ctmcentroc (g_cuenta, centro);

-- Auxiliaries and persons

create table ctmtipoaux (
    tipo_aux   bpchar not null primary key,
    n_tipo_aux bpchar not null default '',
    sistema    bpchar not null default '0',
    activo     bpchar not null default '1'
);

create table ctxaux_cod (
    auxiliar   bpchar not null primary key,
    n_auxiliar bpchar not null default '',
    tipo       bpchar not null default '',
    activo     bpchar not null default '1',
    rut        bpchar not null default ''
);

create index ctxaux_cod_rut on ctxaux_cod (rut);
create index ctxaux_cod_tipo on ctxaux_cod (tipo, auxiliar);
create index ctxaux_cod_activo on ctxaux_cod (activo, auxiliar);

create table admpersona (
    persona     integer not null primary key,
    n_persona   bpchar not null default '',
    telefonos   bpchar not null default '',
    ciudad      bpchar not null default '',
    provincia   bpchar not null default '',
    direccion   bpchar not null default '',
    cedula_ruc  bpchar not null default '',
    observacion bpchar not null default '',
    tipo        bpchar not null default '',
    activo      bpchar not null default '1'
);

create index admpersona_rut on admpersona (cedula_ruc);

-- Balances per month, kept by the posting of the suite

create table ctmsdcenth (
    empresa integer not null,
    anio    integer not null,
    centro  bpchar not null,
    debe1 bigint default 0, haber1 bigint default 0,
    debe2 bigint default 0, haber2 bigint default 0,
    debe3 bigint default 0, haber3 bigint default 0,
    debe4 bigint default 0, haber4 bigint default 0,
    debe5 bigint default 0, haber5 bigint default 0,
    debe6 bigint default 0, haber6 bigint default 0,
    debe7 bigint default 0, haber7 bigint default 0,
    debe8 bigint default 0, haber8 bigint default 0,
    debe9 bigint default 0, haber9 bigint default 0,
    debe10 bigint default 0, haber10 bigint default 0,
    debe11 bigint default 0, haber11 bigint default 0,
    debe12 bigint default 0, haber12 bigint default 0,
    primary key (empresa, anio, centro)
);

create table ctmsdmayor (
    empresa  integer not null,
    anio     integer not null,
    centro   bpchar not null,
    auxiliar bpchar not null default '',
    debe1 bigint default 0, haber1 bigint default 0,
    debe2 bigint default 0, haber2 bigint default 0,
    debe3 bigint default 0, haber3 bigint default 0,
    debe4 bigint default 0, haber4 bigint default 0,
    debe5 bigint default 0, haber5 bigint default 0,
    debe6 bigint default 0, haber6 bigint default 0,
    debe7 bigint default 0, haber7 bigint default 0,
    debe8 bigint default 0, haber8 bigint default 0,
    debe9 bigint default 0, haber9 bigint default 0,
    debe10 bigint default 0, haber10 bigint default 0,
    debe11 bigint default 0, haber11 bigint default 0,
    debe12 bigint default 0, haber12 bigint default 0,
    primary key (empresa, anio, centro, auxiliar)
);

-- Sales invoices

create table ftcfactura (
    empresa       integer not null,
    sucursal      bpchar not null default '1',
    factura       numeric not null,
    proforma      bpchar not null default '',
    fecha         date,
    cliente       integer,
    moneda        bpchar not null default 'PS',
    cotización    numeric not null default 1,
    descuento     numeric not null default 0,
    descuento_esp bigint not null default 0,
    iva           bigint not null default 0,
    valor_total   bigint not null default 0,
    f_comp        date,
    documento     bpchar not null default '',
    num_docum     bpchar not null default ''
);

create unique index ftcfactura_clave on ftcfactura (empresa, factura);
create index ftcfactura_comprobante on ftcfactura (empresa, f_comp, documento, num_docum);

create table ftdfactura (
    empresa     integer not null,
    factura     numeric not null,
    producto    bpchar not null,
    observacion bpchar not null default '',
    cantidad    numeric not null default 0,
    precio      numeric not null default 0,
    primary key (empresa, factura, producto)
);

-- History: every version of a voucher as it was stored, each with the sum of the one before it. A company without
-- a row in ctmhistoria keeps none and protects nothing.

create table ctmhistoria (
    empresa integer not null primary key,
    numero  bigint not null default 0,  -- of the last version
    momento text not null default '', -- its time, UTC
    huella  text not null default '', -- its sum
    guarda  integer not null default 1, -- versions are written
    cerrado integer not null default 0, -- closed years and locked months take no change
    meses   text not null default ''  -- locked months, '2024-03 2024-04 '
);

create table ctdhistoria (
    empresa   integer not null,
    numero    bigint not null,
    momento   text not null,
    anterior  text not null, -- sum of version numero - 1
    usuario   integer not null,
    maquina   text not null,
    operacion text not null,
    grupo     text not null, -- of vouchers that one piece of work wrote
    clave     text not null, -- '2024-03-20|001|01|15', empty for what concerns no voucher
    cabecera  text not null, -- columns of the voucher's header, a JSON list
    lineas    text not null, -- the same of each line, a list of lists
    adjuntos  text not null, -- names of the attached files
    sumas     text not null, -- their SHA-256 when it was written
    primary key (empresa, numero)
);

create index ctdhistoria_clave on ctdhistoria (empresa, clave, numero);
-- vouchers that were taken away
create index ctdhistoria_quitados on ctdhistoria (empresa, numero) where operacion in ('eliminado','cortado');
create index ctdhistoria_grupo on ctdhistoria (empresa, grupo, numero) where grupo<>'';
