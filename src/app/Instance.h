// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <ostream>
#include <string>

namespace clavo
{

/// The one instance of the application in the user's session, which may be another process.
///
/// claim() comes before anything that only one instance may have. No call takes longer than three
/// seconds, even if the other instance hangs. If the processes could not reach each other for a
/// while and another one has become the instance meanwhile, this process gets the request to quit.
/// Thread: main. The receiver is called from the main loop, one request at a time.
class Instance
{
public:
    enum class Role {
        primary,   // This process is the instance until it ends.
        secondary, // Another process is.
        unknown,   // The processes cannot reach each other, and no other one is known to run.
    };
    enum class Request { openPanel, toggle, quit };
    enum class Delivery {
        delivered,
        notRunning,
        noAnswer,
        unreachable, // It runs, but the processes cannot reach each other.
    };
    using Receiver = std::function<void(Request)>;
    /// The answer to a question for the status.
    struct Answer {
        Delivery delivery = Delivery::notRunning;
        std::string status;
    };
    using Reporter = std::function<std::string()>;

    virtual ~Instance() = default;

    /// Makes this process the instance, if no other one is.
    [[nodiscard]] virtual Role claim() = 0;
    /// Asks the other instance, if there is one, to quit, and makes this process the instance when
    /// it has ended. `secondary` if it does not end in time.
    [[nodiscard]] virtual Role replace() = 0;
    /// Sends a request to the instance, which must be another process.
    [[nodiscard]] virtual Delivery send(Request request) = 0;
    /// Asks the instance, which must be another process, for its status.
    [[nodiscard]] virtual Answer askStatus() = 0;
    /// Passes every request made since this process became the instance to the receiver, and from
    /// now on answers questions for the status with the reporter's text.
    virtual void receive(Receiver receiver, Reporter reporter) = 0;
};

/// Makes this process the instance, or opens the panel of the running one. Returns the status to
/// exit with, or nothing if this process is to run; messages for the user go to `errors`.
[[nodiscard]] std::optional<int> startOrOpenPanel(Instance& instance, std::ostream& errors);

/// Makes this process the instance unless another one runs. Returns as above.
[[nodiscard]] std::optional<int> startUnlessRunning(Instance& instance, std::ostream& errors);

/// Makes this process the instance and ends the running one. Returns as above.
[[nodiscard]] std::optional<int> replaceRunning(Instance& instance, std::ostream& errors);

/// Turns the sounds of the running instance on or off. Returns the status to exit with.
[[nodiscard]] int toggleRunning(Instance& instance, std::ostream& errors);

enum class StatusFormat { text, json };

/// Prints the status of the running instance. Returns the status to exit with.
[[nodiscard]] int printStatus(Instance& instance, StatusFormat format, std::ostream& output,
                              std::ostream& errors);

} // namespace clavo
