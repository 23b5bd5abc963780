#pragma once
#include <stdint.h>
typedef struct os_log_s* os_log_t;
typedef uint8_t os_log_type_t;
enum {
    OS_LOG_TYPE_DEFAULT = 0,
    OS_LOG_TYPE_INFO = 1,
    OS_LOG_TYPE_DEBUG = 2,
    OS_LOG_TYPE_ERROR = 0x10,
    OS_LOG_TYPE_FAULT = 0x11
};
#ifdef __cplusplus
extern "C" {
#endif
os_log_t os_log_create(const char* subsystem, const char* category);
bool os_log_type_enabled(os_log_t log, os_log_type_t type);
#ifdef __APPLE__
extern char __dso_handle;
void _os_log_impl(void* dso, os_log_t log, os_log_type_t type, char const* format, uint8_t* buf, uint32_t size);
#define os_log_with_type(log, type, format, ...)                                                                       \
    do {                                                                                                               \
        os_log_t _l = (log);                                                                                           \
        if (os_log_type_enabled(_l, (type))) {                                                                         \
            static const char _f[]                                                                                     \
                __attribute__((section("__TEXT,__oslogstring,cstring_literals"), internal_linkage)) = format;          \
            uint8_t _b[__builtin_os_log_format_buffer_size(format, ##__VA_ARGS__)] __attribute__((aligned(16)));       \
            _os_log_impl(&__dso_handle, _l, (type), _f, (uint8_t*)__builtin_os_log_format(_b, format, ##__VA_ARGS__),  \
                (uint32_t)sizeof _b);                                                                                  \
        }                                                                                                              \
    } while (0)
#else
void zelvora_double_os_log(os_log_t, os_log_type_t, const char* format, ...) __attribute__((format(__printf__, 3, 4)));
#define os_log_with_type(log, type, format, ...) zelvora_double_os_log((log), (type), format, ##__VA_ARGS__)
#endif
#ifdef __cplusplus
}
#endif
