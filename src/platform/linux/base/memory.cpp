#include "platform/linux/base/memory.h"

#include <malloc.h>
#include <sys/prctl.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

// By itself glibc raises its limit with each large block that is freed, and then keeps blocks of up to 32
// MiB.
constexpr std::size_t largeBlock = 1 << 20;

} // namespace

namespace platform {

void prepareMemory() {
    mallopt(M_MMAP_THRESHOLD, largeBlock);
#ifdef NDEBUG
    prctl(PR_SET_DUMPABLE, 0);
#endif
}

} // namespace platform

void* operator new(std::size_t size) {
    if (void* block = std::malloc(size)) return block;
    throw std::bad_alloc();
}

// Large blocks go back to the system, which clears them.
void operator delete(void* block) noexcept {
    if (block == nullptr) return;
    if (const std::size_t size = malloc_usable_size(block); size < largeBlock) explicit_bzero(block, size);
    std::free(block);
}

// All other forms, such as those for arrays, call the first two by themselves.
void operator delete(void* block, std::size_t) noexcept { operator delete(block); }
