#include "platform/linux/base/memory.h"
#include "testing/desktop/temporary_folder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <malloc.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>

namespace platform {
namespace {

// How a child process ends that first does `act`, where core files may be written.
int statusOfChild(const std::function<void()>& act) {
    const testbed::TemporaryFolder folder;
    const pid_t child = fork();
    if (child == 0) {
        const rlimit unlimited{RLIM_INFINITY, RLIM_INFINITY};
        setrlimit(RLIMIT_CORE, &unlimited);
        if (chdir((folder / "").c_str()) == 0) act();
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return status;
}

TEST(Memory, ACrashWritesNoCoreFile) {
#ifndef NDEBUG
    GTEST_SKIP() << "allowed in a build with assertions";
#endif
    const auto crash = [] {
        signal(SIGABRT, SIG_DFL);
        raise(SIGABRT);
    };
    if (!WCOREDUMP(statusOfChild(crash))) GTEST_SKIP() << "this machine writes none";
    const int status = statusOfChild([&] {
        prepareMemory();
        crash();
    });
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_FALSE(WCOREDUMP(status));
}

TEST(Memory, LargeBlocksGoBackToTheSystem) {
    const int status = statusOfChild([] {
        prepareMemory();
        // glibc takes blocks of this size from the heap once the first of them has been freed.
        constexpr std::size_t size = std::size_t{20} << 20;
        const auto before = mallinfo2().fordblks; // other tests of this process may have left much
        void* volatile block = std::malloc(size); // volatile: else the compiler leaves all of this out
        std::free(block);
        block = std::malloc(size);
        void* volatile small = std::malloc(100'000); // behind it: the heap cannot shrink
        std::free(block);
        const bool kept = mallinfo2().fordblks >= before + size / 2;
        std::free(small);
        _exit(kept ? 1 : 0);
    });
    EXPECT_EQ(status, 0);
}

TEST(Memory, FreedTextsAreOverwritten) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "the sanitizers free memory in their own way";
#endif
    // In a process of its own, where no other thread can use the freed block at once.
    const int status = statusOfChild([] {
        const int memory = open("/proc/self/mem", O_RDONLY | O_CLOEXEC);
        auto text = std::make_unique<std::string>(200, 's');
        // Into the first two words of a freed block glibc writes random numbers, any byte of which may be an
        // 's'.
        constexpr std::size_t allocators = 2 * sizeof(void*);
        const auto place = static_cast<off_t>(reinterpret_cast<std::uintptr_t>(text->data()) + allocators);
        const auto left = [&] {
            std::array<char, 200 - allocators> bytes{}; // on the stack, for the freed block to stay free
            // Nothing can be read any more where the heap has shrunk.
            return pread(memory, bytes.data(), bytes.size(), place) < 0 ? 0 : std::ranges::count(bytes, 's');
        };
        const bool wasThere = left() == 200 - allocators;
        text.reset();
        _exit(wasThere && left() == 0 ? 0 : 1);
    });
    EXPECT_EQ(status, 0);
}

} // namespace
} // namespace platform
