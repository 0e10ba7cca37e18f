#pragma once

#include "platform/linux/at_spi/object.h"
#include "platform/linux/at_spi/subscription.h"

#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace platform::at_spi {

// Which objects gained the keyboard focus lately, as programs tell it while the history lives and somebody
// has registered for "object:state-changed:focused". Main thread only.
//
// It says where to look first, and no more: programs leave out that an object has lost the focus, and what
// had the focus before the history began is not in it.
class FocusHistory {
public:
    explicit FocusHistory(Bus& bus);

    // The objects of that program that gained the focus, the latest first; a few at most.
    std::vector<Object> of(const std::string& program) const;

private:
    void hear(const Signal& signal);

    mutable std::mutex mutex_;
    std::map<std::string, std::vector<std::string>>
        programs_;              // their paths, the latest last; under the mutex
    Subscription subscription_; // last: its handler uses what stands above
};

} // namespace platform::at_spi
