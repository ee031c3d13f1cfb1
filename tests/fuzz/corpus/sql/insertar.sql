insert into ctdquorvel(empresa,f_comp,debe,glosa) values (1,#01/31/2024#,-1500.5,'ñandú'); -- fin
