// A program started by a test; it does not outlive its object.
#pragma once

#include "testing/desktop/temporary_folder.h"
#include "testing/desktop/wait.h"

#include <sys/types.h>

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace testbed {

class Process {
public:
    // `environment` adds to the test's own. Standard output and error are kept, together.
    explicit Process(const std::vector<std::string>& command,
                     const std::map<std::string, std::string>& environment = {});
    // Asks it to end; a program that does not is killed.
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    pid_t pid() const { return pid_; }
    std::string output() const;
    // To its standard input; throws when it takes none.
    void write(std::string_view text) const;
    void writeLine(const std::string& line) const { write(line + "\n"); }
    void closeInput();
    void signal(int number) const;

    // The exit status (128 + n when signal n ended it); absent when it still runs after `limit`.
    std::optional<int> exitStatus(milliseconds limit = reactionLimit);

private:
    TemporaryFolder folder_;
    pid_t pid_ = -1;
    int input_ = -1;
    std::optional<int> status_;
};

} // namespace testbed
