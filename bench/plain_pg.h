#pragma once
#ifdef __cplusplus
extern "C" {
#endif
/* The same rows on a PostgreSQL server: prepared statements, one round trip each. */
int plain_pg_open(const char* conninfo);
int plain_pg_save(int number);
void plain_pg_close(void);
#ifdef __cplusplus
}
#endif
