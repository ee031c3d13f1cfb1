#pragma once
#ifdef __cplusplus
extern "C" {
#endif
/* What a program without any layers does: the same rows through prepared statements, as durable. */
int plain_open(const char* path);
/* One voucher of four lines in one transaction; 0 on success. */
int plain_save(int number);
void plain_close(void);
#ifdef __cplusplus
}
#endif
