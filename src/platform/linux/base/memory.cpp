#include "platform/linux/base/memory.h"

#include <malloc.h>
#include <sys/prctl.h>

namespace {

// By itself glibc raises its limit with each large block that is freed, and then keeps blocks of up to 32
// MiB.
constexpr int largeBlock = 1 << 20;

} // namespace

namespace platform {

void prepareMemory() {
    mallopt(M_MMAP_THRESHOLD, largeBlock);
#ifdef NDEBUG
    prctl(PR_SET_DUMPABLE, 0);
#endif
}

} // namespace platform
