#include "platform/WideRegisters.h"

#ifdef __x86_64__

#include <immintrin.h>

namespace {

[[gnu::target("avx")]] void zeroUpperHalves() {
    _mm256_zeroupper();
}

} // namespace

void releaseWideRegisters() {
    if (__builtin_cpu_supports("avx"))
        zeroUpperHalves();
}

#else

void releaseWideRegisters() {}

#endif
