#pragma once

#include <functional>
#include <memory>
#include <string>

namespace platform {

// The one host of this user on this display. Whoever owns the selection of that name is it; the X server
// takes the selection away with its owner's connection, so a killed host leaves nothing behind. Main thread
// only.
class SoleInstance {
public:
    enum class Outcome { claimed, reopened, silent };

    // `reopened`: another host runs and has been asked to show its window. `silent`: it runs but did not
    // answer within two seconds. Otherwise this process is the host from now on, as long as the object in
    // `instance` lives, and `reopen` is called from the main loop whenever the host is started again. Without
    // a display: claimed, with a null `instance`.
    static Outcome claim(std::function<void()> reopen, std::unique_ptr<SoleInstance>& instance);

    ~SoleInstance();
    SoleInstance(const SoleInstance&) = delete;
    SoleInstance& operator=(const SoleInstance&) = delete;

private:
    class Claim;
    explicit SoleInstance(std::unique_ptr<Claim> claim);

    std::unique_ptr<Claim> claim_;
};

} // namespace platform
