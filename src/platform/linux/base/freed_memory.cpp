// Overwrites what C++ code frees, in every program that this is linked into (memory.h). Not built with the
// sanitizers, whose own operators find faults that these would hide.
#include <malloc.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

// Blocks this large go back to the system, which clears them: above the limit that prepareMemory() sets.
constexpr std::size_t largeBlock = 1 << 20;

} // namespace

void* operator new(std::size_t size) {
    if (void* block = std::malloc(size)) return block;
    throw std::bad_alloc();
}

void operator delete(void* block) noexcept {
    if (block == nullptr) return;
    if (const std::size_t size = malloc_usable_size(block); size < largeBlock) explicit_bzero(block, size);
    std::free(block);
}

// All other forms, such as those for arrays, call the first two by themselves.
void operator delete(void* block, std::size_t) noexcept { operator delete(block); }
