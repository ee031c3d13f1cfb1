create table "año" (centro text(6) not null,monto double,constraint pk_año primary key (centro))
