#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace exifcard {

/// One option or argument, as it was declared; each call adds a rule to it.
class CommandOption {
public:
    explicit CommandOption(CLI::Option& option) : _option(&option) {}

    CommandOption required();
    /// What stands for the value in the help: "NAME".
    CommandOption named(const std::string& placeholder);
    /// Takes these values alone; help shows them and completion offers them.
    CommandOption limitedTo(const std::vector<std::string>& choices);
    CommandOption between(std::size_t least, std::size_t most);
    /// @param fault  Answers what is wrong with a value; empty for a good one.
    CommandOption checkedBy(std::function<std::string(const std::string& value)> fault);
    /// The two cannot be given together.
    CommandOption excluding(const CommandOption& other);

private:
    CLI::Option* _option; // Owned by the command.
};

/// The options and arguments of a command. The parser's own header is as long
/// as all commands together: only this class and the parsing itself see it.
///
/// Names are as they are typed, "-q,--quiet"; those without dashes are
/// arguments. A value must live as long as the command.
class CommandOptions {
public:
    explicit CommandOptions(CLI::App& app) : _app(&app) {}

    CommandOption flag(const std::string& names, bool& value, const std::string& help);
    /// A flag that may have a value: "--color" and "--color=never". Its name is followed by what it stands
    /// for alone,
    /// "--color{always}".
    CommandOption flag(const std::string& names, std::string& value, const std::string& help);
    CommandOption value(const std::string& names, std::string& value, const std::string& help);
    CommandOption value(const std::string& names, unsigned& value, const std::string& help);
    CommandOption value(const std::string& names, std::size_t& value, const std::string& help);
    CommandOption value(const std::string& names, std::vector<std::string>& values, const std::string& help);

    /// The whole command line that the command belongs to.
    const CLI::App& commandLine() const;

private:
    CLI::App* _app;
};

} // namespace exifcard
