drop table temporal; with t as (select "a;b" from x union select null) select distinct a||'' from t where b!=.5 limit 3; explain select case when a>=1 then 'b' else 'c' end
