#pragma once

// The functions with an explicit locale that libc++ expects on macOS and that the C library of this machine lacks.

#include <ctype.h>
#include <locale.h>
#include <stdio.h>
#include <stdlib.h>
#include <time.h>
#include <wchar.h>
#include <wctype.h>

#ifdef __cplusplus
extern "C" {
#endif

int asprintf_l(char**, locale_t, const char*, ...);
int snprintf_l(char*, size_t, locale_t, char const*, ...);
int sscanf_l(char const*, locale_t, char const*, ...);
int vsnprintf_l(char*, size_t, locale_t, char const*, __builtin_va_list);

wint_t btowc_l(int, locale_t);
int wctob_l(wint_t, locale_t);
int mbtowc_l(wchar_t*, char const*, size_t, locale_t);
size_t mbrlen_l(char const*, size_t, mbstate_t*, locale_t);
size_t mbrtowc_l(wchar_t*, char const*, size_t, mbstate_t*, locale_t);
size_t mbsnrtowcs_l(wchar_t*, char const**, size_t, size_t, mbstate_t*, locale_t);
size_t mbsrtowcs_l(wchar_t*, char const**, size_t, mbstate_t*, locale_t);
size_t wcrtomb_l(char*, wchar_t, mbstate_t*, locale_t);
size_t wcsnrtombs_l(char*, wchar_t const**, size_t, size_t, mbstate_t*, locale_t);

struct lconv* localeconv_l(locale_t);

#ifdef __cplusplus
}
#endif
