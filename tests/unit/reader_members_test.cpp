// The members of a new reader: their values and the order in which they stand in the object.

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

#include "core/vyn_profile_log_reader.h"
#include "core/vyn_profile_log_reader_json.h"

namespace vyn::profiling {
namespace {

class NewReader : public VynProfileLogReaderJSON {
 public:
  using VynProfileLogReaderJSON::VynProfileLogReaderJSON;

  void expectOrder() const {
    const void* const members[] = {&m_visibilityLevel,
                                   &m_reachedEof,
                                   &m_flatBufferReader,
                                   &m_initTimestamp,
                                   &m_initTime,
                                   &m_contextCreateTimestamp,
                                   &m_contextCreateTime,
                                   &m_composeGraphsTimestamp,
                                   &m_composeGraphsTime,
                                   &m_reservedTimestamp,
                                   &m_reservedTime,
                                   &m_initEvents,
                                   &m_hasInitEvents,
                                   &m_createFromBinaryTime,
                                   &m_createFromBinaryTimestamp,
                                   &m_createFromBinaryEvents,
                                   &m_hasCreateFromBinaryEvents,
                                   &m_hasApplyBinarySection,
                                   &m_finalizeGroups,
                                   &m_hasFinalize,
                                   &m_hasFinalizeEvents,
                                   &m_executeGroups,
                                   &m_applyBinarySectionGroups,
                                   &m_asyncExecute,
                                   &m_executeAverage,
                                   &m_applyBinarySectionAverage,
                                   &m_applyBinarySectionMax,
                                   &m_applyBinarySectionMin,
                                   &m_executeMax,
                                   &m_executeMin,
                                   &m_queueWaitSeries,
                                   &m_queueWaitMax,
                                   &m_queueWaitMin,
                                   &m_executeIpsTime,
                                   &m_executeIpsTimestamp,
                                   &m_executeIpsEvents,
                                   &m_hasExecuteIps,
                                   &m_omitExecuteDetails,
                                   &m_deInitTime,
                                   &m_deInitTimestamp,
                                   &m_deInitEvents,
                                   &m_netRunVersion,
                                   &m_backendVersion,
                                   &m_libLoadTime,
                                   &m_libLoadTimestamp,
                                   &m_libLoadEvents,
                                   &m_hasLibLoad,
                                   &m_inputLogFileLocation,
                                   &m_headerSaved,
                                   &m_writeObjectPayloads,
                                   &m_epochTime,
                                   &m_steadyClockTimestamp,
                                   &m_timeScale,
                                   &m_eventStrings,
                                   &m_jsonRoot,
                                   &m_metadataAdded};
    EXPECT_TRUE(std::is_sorted(std::begin(members), std::end(members)));
  }

  void expectInitialValues() const {
    EXPECT_EQ(m_visibilityLevel, VisibilityLevel{-3});
    EXPECT_EQ(m_inputLogFileLocation, "some.log");
    for (const std::uint64_t number :
         {m_initTimestamp, m_initTime, m_contextCreateTimestamp, m_contextCreateTime,
          m_composeGraphsTimestamp, m_composeGraphsTime, m_reservedTimestamp, m_reservedTime,
          m_createFromBinaryTime, m_createFromBinaryTimestamp, m_executeIpsTime,
          m_executeIpsTimestamp, m_deInitTime, m_deInitTimestamp, m_libLoadTime,
          m_libLoadTimestamp}) {
      EXPECT_EQ(number, 0U);
    }
    for (const bool flag :
         {m_reachedEof, m_hasInitEvents, m_hasCreateFromBinaryEvents, m_hasApplyBinarySection,
          m_hasFinalize, m_hasFinalizeEvents, m_asyncExecute, m_hasExecuteIps, m_omitExecuteDetails,
          m_hasLibLoad, m_headerSaved, m_writeObjectPayloads, m_metadataAdded}) {
      EXPECT_FALSE(flag);
    }
    EXPECT_EQ(m_flatBufferReader.header(), nullptr);
    EXPECT_EQ(m_netRunVersion, "");
    EXPECT_EQ(m_backendVersion, "");
    EXPECT_TRUE(m_eventStrings.empty());
    ASSERT_TRUE(m_jsonRoot.IsObject());
    EXPECT_TRUE(m_jsonRoot.ObjectEmpty());
  }

  void expectEmptyStores() const {
    for (const auto* events : {&m_initEvents, &m_createFromBinaryEvents, &m_executeIpsEvents,
                               &m_deInitEvents, &m_libLoadEvents}) {
      EXPECT_TRUE(events->empty());
    }
    for (const auto* groups :
         {&m_finalizeGroups, &m_executeAverage, &m_executeMax, &m_executeMin,
          &m_applyBinarySectionAverage, &m_applyBinarySectionMax, &m_applyBinarySectionMin}) {
      EXPECT_TRUE(groups->empty());
    }
    EXPECT_TRUE(m_executeGroups.empty());
    EXPECT_TRUE(m_applyBinarySectionGroups.empty());
    EXPECT_TRUE(m_queueWaitSeries.empty());
    EXPECT_TRUE(m_queueWaitMax.empty());
    EXPECT_TRUE(m_queueWaitMin.empty());
  }
};

TEST(NewReaders, HoldTheirArgumentsAndNothingElse) {
  const NewReader reader("some.log", VisibilityLevel{-3});
  reader.expectInitialValues();
  reader.expectEmptyStores();
}

TEST(NewReaders, KeepTheOrderOfTheirMembers) {
  NewReader("some.log", VisibilityLevel{0}).expectOrder();
}

}  // namespace
}  // namespace vyn::profiling
