#pragma once

#include <string>

#include <CLI/CLI.hpp>

namespace quillara {

/// The look of --help: no line wider than a terminal, one empty line between the parts.
class HelpFormatter : public CLI::Formatter {
  public:
    HelpFormatter();

    std::string make_help(const CLI::App* app, std::string name, CLI::AppFormatMode mode) const override;
    std::string make_footer(const CLI::App* app) const override;
    std::string make_option_desc(const CLI::Option* option) const override;
};

}  // namespace quillara
