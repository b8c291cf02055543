// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <ostream>
#include <string>

namespace clavo
{

/// The one instance of the application that a user's session has, whichever process that is.
///
/// claim() comes before anything that two instances must not both have. No call takes longer than
/// three seconds, however the other instance hangs.
/// Thread: main. The receiver is called from the main loop, one request at a time.
class Instance
{
public:
    enum class Role {
        primary,   // This process is the instance until it ends.
        secondary, // Another process is.
        unknown,   // The processes cannot reach each other.
    };
    enum class Request { openPanel, toggle, quit };
    enum class Delivery { delivered, notRunning, noAnswer };
    using Receiver = std::function<void(Request)>;
    /// What became of the question for the status, and the text it was answered with.
    struct Answer {
        Delivery delivery = Delivery::notRunning;
        std::string status;
    };
    using Reporter = std::function<std::string()>;

    virtual ~Instance() = default;

    /// Makes this process the instance, if no other one is.
    [[nodiscard]] virtual Role claim() = 0;
    /// Has the other instance quit, if there is one, and makes this process the instance when it
    /// has ended. `secondary` if it does not end in time.
    [[nodiscard]] virtual Role replace() = 0;
    /// Asks the instance, which must be another process.
    [[nodiscard]] virtual Delivery send(Request request) = 0;
    /// As send(), for what the instance tells of itself.
    [[nodiscard]] virtual Answer askStatus() = 0;
    /// Calls the receiver with every request made since this process is the instance, and from now
    /// on the reporter whenever another process asks for the status.
    virtual void receive(Receiver receiver, Reporter reporter) = 0;
};

/// Makes this process the instance, or has the one that runs open its panel. The status to exit
/// with, or nothing if this process is to run; `errors` gets what the user must know.
[[nodiscard]] std::optional<int> startOrOpenPanel(Instance& instance, std::ostream& errors);

/// Makes this process the instance, or leaves it to the one that runs. As above.
[[nodiscard]] std::optional<int> startUnlessRunning(Instance& instance, std::ostream& errors);

/// Makes this process the instance in the place of the one that runs, if one does. As above.
[[nodiscard]] std::optional<int> replaceRunning(Instance& instance, std::ostream& errors);

/// Has the running instance turn the sounds on or off. The status to exit with.
[[nodiscard]] int toggleRunning(Instance& instance, std::ostream& errors);

enum class StatusFormat { text, json };

/// Prints what the running instance tells of itself. The status to exit with.
[[nodiscard]] int printStatus(Instance& instance, StatusFormat format, std::ostream& output,
                              std::ostream& errors);

} // namespace clavo
