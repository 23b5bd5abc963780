#pragma once
#ifdef __cplusplus
extern "C" {
#endif
void* _Block_copy(const void*);
void _Block_release(void const*);
#ifdef __cplusplus
}
#endif
#define Block_copy(...) ((__typeof(__VA_ARGS__))_Block_copy((const void*)(__VA_ARGS__)))
#define Block_release(...) _Block_release((const void*)(__VA_ARGS__))
