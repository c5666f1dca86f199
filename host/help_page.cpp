#include "host/help_page.h"

namespace vyn::host {

std::string HelpPage::make_help(const CLI::App* app, std::string name,
                                CLI::AppFormatMode mode) const {
  return make_description(app) + "Usage: " + name + " [" + m_defaultVerb.get_name() +
         "] LOG [options]\n" + make_positionals(&m_defaultVerb) +
         make_groups(&m_defaultVerb, mode) + make_subcommands(app, mode) + "\n" + make_footer(app);
}

}  // namespace vyn::host
