// The log header: saved once, and told as text.

#include <dlfcn.h>
#include <gmock/gmock.h>

#include <cstdlib>
#include <ctime>
#include <locale>

#include "core/vyn_profile_log_reader.h"
#include "log/logger_registry.h"
#include "support/captured_output.h"
#include "support/foreign_locale.h"
#include "support/json_log.h"
#include "support/temp_folder.h"

namespace {

bool g_calendarFails = false;

}  // namespace

// Stands before the C library's, whose calendar reaches further than a log's times.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): its names are reserved
extern "C" std::tm* localtime_r(const std::time_t* seconds, std::tm* calendar) noexcept {
  static const auto original =
      reinterpret_cast<decltype(&localtime_r)>(dlsym(RTLD_NEXT, "localtime_r"));
  return g_calendarFails ? nullptr : original(seconds, calendar);
}

namespace vyn::profiling {
namespace {

using testing::HasSubstr;
using testing::Not;

using test::printedBy;

class OpenReader : public VynProfileLogReader {
 public:
  using VynProfileLogReader::m_epochTime;
  using VynProfileLogReader::m_headerSaved;
  using VynProfileLogReader::m_inputLogFileLocation;
  using VynProfileLogReader::m_netRunVersion;
  using VynProfileLogReader::m_steadyClockTimestamp;
  using VynProfileLogReader::m_timeScale;
  using VynProfileLogReader::saveHeader;
  using VynProfileLogReader::VynProfileLogReader;
};

class HeaderDetails : public testing::Test {
 protected:
  void SetUp() override {
    setenv("TZ", "UTC", 1);
    tzset();
  }

  // The details of a log of these chunks, as if it lay at /data/run.log.
  std::string detailsOf(std::initializer_list<std::string> chunks, int visibility = 127) {
    OpenReader reader(m_folder.add("run.log", test::logOf(chunks)), VisibilityLevel(visibility));
    EXPECT_TRUE(reader.readInputFile(false));
    reader.m_inputLogFileLocation = "/data/run.log";
    return test::masked(reader.getHeaderDetails());
  }

  test::TempFolder m_folder;
};

const std::string kExample =
    "{header:{timeScale:1.0,epochTime:1700000000000000,timestamp:123456,netRunVersion:\"2.0.0\"}}";

const std::string kExampleDetails =
    "Input Log File Location: /data/run.log\n"
    "Log File Created: Tue Nov 14 22:13:20 2023\n"
    "Time Scale: 1\n"
    "Epoch Timestamp: 1700000000000000 Steady Clock Timestamp: 123456\n"
    "Generated using: \n"
    "vyn-profile-viewer <version>\n"
    "vyn-net-run        2.0.0\n";

TEST_F(HeaderDetails, AreSevenLinesWithoutABackendVersion) {
  EXPECT_EQ(detailsOf({kExample}), kExampleDetails);
}

TEST_F(HeaderDetails, EndWithTheBackendVersion) {
  EXPECT_THAT(detailsOf({"{header:{backendVersion:\"1.9\"}}"}),
              HasSubstr("vyn-profile-viewer <version>\nBackend            1.9\n"));
}

TEST_F(HeaderDetails, OfAHeaderWithoutFieldsAreZeros) {
  EXPECT_EQ(detailsOf({"{header:{}}"}),
            "Input Log File Location: /data/run.log\n"
            "Log File Created: Thu Jan  1 00:00:00 1970\n"
            "Time Scale: 0\n"
            "Epoch Timestamp: 0 Steady Clock Timestamp: 0\n"
            "Generated using: \n"
            "vyn-profile-viewer <version>\n");
}

TEST_F(HeaderDetails, TimeBelowASecondIsTheFirstSecondOf1970) {
  EXPECT_THAT(detailsOf({"{header:{epochTime:999999}}"}), HasSubstr("Thu Jan  1 00:00:00 1970\n"));
}

TEST_F(HeaderDetails, TimeScaleHasSixSignificantDigits) {
  EXPECT_THAT(detailsOf({"{header:{timeScale:0.123456789}}"}), HasSubstr("Time Scale: 0.123457\n"));
}

TEST_F(HeaderDetails, AreThoseOfTheFirstHeader) {
  EXPECT_EQ(detailsOf({kExample, "{header:{timeScale:2.0,netRunVersion:\"3\"}}"}), kExampleDetails);
}

TEST_F(HeaderDetails, HeaderOfALaterChunkIsTakenWhenTheFirstHasNone) {
  EXPECT_EQ(detailsOf({"{}", kExample}), kExampleDetails);
}

TEST_F(HeaderDetails, KeepTheZeroBytesOfVersionTexts) {
  using namespace std::string_literals;  // NOLINT(google-build-using-namespace)
  const std::string details = detailsOf(
      {"{header:{netRunVersion:\"2.0\\u0000net\",backendVersion:\"\\u00001.9\\u0000\"}}"});
  EXPECT_THAT(details, HasSubstr("<version>\nvyn-net-run        2.0\0net\n"
                                 "Backend            \0"
                                 "1.9\0\n"s));
}

TEST_F(HeaderDetails, KeepTheZeroBytesOfTheLogsName) {
  using namespace std::string_literals;  // NOLINT(google-build-using-namespace)
  const std::string name = m_folder.add("run.log", test::logOf({kExample})) + "\0more"s;
  OpenReader reader(name, VisibilityLevel{127});
  ASSERT_TRUE(reader.readInputFile(false));
  EXPECT_EQ(reader.getHeaderDetails().substr(0, name.size() + 26),
            "Input Log File Location: " + name + "\n");
}

TEST_F(HeaderDetails, AreSavedWhateverTheLevel) {
  EXPECT_EQ(detailsOf({kExample}, 0), kExampleDetails);
}

TEST_F(HeaderDetails, AreEmptyForALogWithoutHeader) { EXPECT_EQ(detailsOf({"{}"}), ""); }

TEST_F(HeaderDetails, YearThatHasNoTextGivesNothing) {
  // Year 10000 and later do not fit into the calendar text.
  ASSERT_TRUE(log::initializeLogging(nullptr, log::kDebug));
  std::string details = "some";
  const std::string printed =
      test::printedBy([&] { details = detailsOf({"{header:{epochTime:18446744073709551615}}"}); });
  log::terminateLogging();
  EXPECT_EQ(details, "");
  EXPECT_THAT(printed, Not(HasSubstr("vailable")));
  EXPECT_THAT(printed, Not(HasSubstr("ERROR")));
}

TEST_F(HeaderDetails, TimeWithoutACalendarFormIsLeftOut) {
  g_calendarFails = true;
  const std::string details = detailsOf({kExample});
  g_calendarFails = false;
  EXPECT_EQ(details,
            "Input Log File Location: /data/run.log\n"
            "Time Scale: 1\n"
            "Epoch Timestamp: 1700000000000000 Steady Clock Timestamp: 123456\n"
            "Generated using: \n"
            "vyn-profile-viewer <version>\n"
            "vyn-net-run        2.0.0\n");
}

TEST_F(HeaderDetails, NumbersArePlainInAGroupingLocale) {
  const test::GlobalGroupingLocale grouping;
  EXPECT_EQ(detailsOf({kExample}), kExampleDetails);
}

class HeaderLog : public HeaderDetails {
 protected:
  void SetUp() override {
    HeaderDetails::SetUp();
    ASSERT_TRUE(log::initializeLogging(nullptr, log::kDebug));
  }
  void TearDown() override { log::terminateLogging(); }
};

TEST_F(HeaderLog, SaysThatThereAreNoDetailsBeforeAnyHeader) {
  OpenReader reader("run.log", VisibilityLevel{1});
  EXPECT_EQ(printedBy([&] { EXPECT_EQ(reader.getHeaderDetails(), ""); }),
            "<ms> [ DEBUG ] Header details unavailable.\n");
}

TEST_F(HeaderLog, SaysThatThereIsNoHeaderToSave) {
  OpenReader reader("run.log", VisibilityLevel{1});
  EXPECT_EQ(printedBy([&] { reader.saveHeader(); }), "<ms> [ DEBUG ] hdr is nullptr\n");
  EXPECT_FALSE(reader.m_headerSaved);
}

TEST_F(HeaderLog, SaysThatAHeaderWasSavedAlready) {
  OpenReader reader(m_folder.add("run.log", test::logOf({kExample})), VisibilityLevel{1});
  printedBy([&] { ASSERT_TRUE(reader.readInputFile(false)); });
  EXPECT_EQ(printedBy([&] { reader.saveHeader(); }),
            "<ms> [ DEBUG ] Header details have been saved already.\n");
  EXPECT_EQ(reader.m_epochTime, 1700000000000000U);
  EXPECT_EQ(reader.m_steadyClockTimestamp, 123456U);
  EXPECT_EQ(reader.m_timeScale, 1.0F);
}

}  // namespace
}  // namespace vyn::profiling
