#pragma once

#include <CLI/App.hpp>
#include <CLI/Formatter.hpp>
#include <string>

namespace vyn::host {

/// The program's own help: it shows what the verb takes that a command line without one means.
class HelpPage : public CLI::Formatter {
 public:
  /// `defaultVerb` must outlive the page.
  explicit HelpPage(const CLI::App& defaultVerb) : m_defaultVerb(defaultVerb) {}

  std::string make_help(const CLI::App* app, std::string name,
                        CLI::AppFormatMode mode) const override;

 private:
  const CLI::App& m_defaultVerb;
};

}  // namespace vyn::host
