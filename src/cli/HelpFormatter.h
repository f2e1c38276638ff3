#pragma once

#include <CLI/CLI.hpp>

#include <string>

namespace exifcard {

/// Lays out the help: what the command does, its usage and options, the options that every command takes,
/// examples. help2man reads the same text.
class HelpFormatter : public CLI::Formatter {
public:
    HelpFormatter();

    std::string make_usage(const CLI::App* app, std::string name) const override;
    std::string make_option_name(const CLI::Option* option, bool isPositional) const override;
    std::string make_option_opts(const CLI::Option* option) const override;
    std::string make_footer(const CLI::App* app) const override;
};

} // namespace exifcard
