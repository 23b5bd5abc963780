// Own declarations (POSIX/BSD names only): lets Debian's libc++-19 headers, which take the BSD branch for
// __APPLE__, sit on Debian's musl-dev headers. Compile gate only.
#pragma once
#include <features.h>
#include <stdint.h>
typedef uint32_t __uint32_t;
#include <locale.h>
#include <stdarg.h>
#include <stddef.h>
#include <stdio.h>
#include <wchar.h>
#ifdef __cplusplus
extern "C" {
#endif
size_t wcsnrtombs_l(char*, const wchar_t**, size_t, size_t, mbstate_t*, locale_t);
size_t wcrtomb_l(char*, wchar_t, mbstate_t*, locale_t);
size_t mbsnrtowcs_l(wchar_t*, char const**, size_t, size_t, mbstate_t*, locale_t);
size_t mbrtowc_l(wchar_t*, char const*, size_t, mbstate_t*, locale_t);
int mbtowc_l(wchar_t*, char const*, size_t, locale_t);
size_t mbrlen_l(char const*, size_t, mbstate_t*, locale_t);
size_t mbsrtowcs_l(wchar_t*, char const**, size_t, mbstate_t*, locale_t);
wint_t btowc_l(int, locale_t);
int wctob_l(wint_t, locale_t);
struct lconv* localeconv_l(locale_t);
int snprintf_l(char*, size_t, locale_t, char const*, ...);
int asprintf_l(char**, locale_t, char const*, ...);
int sscanf_l(char const*, locale_t, char const*, ...);
long long strtoll_l(char const*, char**, int, locale_t);
unsigned long long strtoull_l(char const*, char**, int, locale_t);
float strtof_l(char const*, char**, locale_t);
double strtod_l(char const*, char**, locale_t);
long double strtold_l(char const*, char**, locale_t);
int isxdigit_l(int, locale_t);
int isdigit_l(int, locale_t);
int isupper_l(int, locale_t);
int islower_l(int, locale_t);
int toupper_l(int, locale_t);
int tolower_l(int, locale_t);
size_t strftime_l(char*, size_t, char const*, const struct tm*, locale_t);
#define MB_CUR_MAX_L(l) ((size_t)4)
#ifdef __cplusplus
}
#endif
#define _CTYPE_A 0x100L
#define _CTYPE_C 0x200L
#define _CTYPE_D 0x400L
#define _CTYPE_L 0x1000L
#define _CTYPE_P 0x2000L
#define _CTYPE_S 0x4000L
#define _CTYPE_U 0x8000L
#define _CTYPE_X 0x10000L
#define _CTYPE_B 0x20000L
#define _CTYPE_R 0x40000L
#ifndef LC_COLLATE_MASK
#endif
