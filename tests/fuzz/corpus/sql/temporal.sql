select centro,'x' as marca into temporal from ctmcentros where month(f)=2 /* nota; */ and cast(cuenta as integer) in (1,2)
