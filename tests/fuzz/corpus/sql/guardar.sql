update ctcquorvel set concepto='O''Higgins',f_comp=#06/15/2024#,debe=debe-100 where empresa=1 and documento='001' and year(f_comp)=2024 and month(f_comp)=6 and day(f_comp)=15
