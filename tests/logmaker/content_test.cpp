#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

#include "made_log.h"

namespace vyn::logmaker::test {
namespace {

using schema::EventType;
using schema::EventUnit;
using schema::EventValueType;
using schema::MethodType;

TEST(Content, HeaderIsComplete) {
  const MadeLog log = MadeLog::withOptions("");
  const schema::LogHeader* header = log.chunk(0).header();
  ASSERT_NE(header, nullptr);
  EXPECT_EQ(header->timeScale(), 1.0F);
  EXPECT_GT(header->epochTime(), 1'704'067'200'000'000U);
  EXPECT_GT(header->timestamp(), 0U);
  ASSERT_NE(header->version(), nullptr);
  EXPECT_EQ(header->version()->major(), 1U);
  EXPECT_STREQ(header->netRunVersion()->c_str(), "2.4.1");
  EXPECT_STREQ(header->backendVersion()->c_str(), "1.9.0-accelerator");
}

TEST(Content, RunGoesFromLibraryLoadToDeInit) {
  const MadeLog log = MadeLog::withOptions("--executions 2");
  std::vector<MethodType> methods;
  for (const schema::Message* message : log.messages()) {
    methods.push_back(message->method());
  }
  EXPECT_EQ(methods, (std::vector{MethodType::LIBRARY_LOAD, MethodType::APP_CONTEXT_CREATE,
                                  MethodType::APP_COMPOSE_GRAPHS, MethodType::BACKEND_FINALIZE,
                                  MethodType::BACKEND_EXECUTE, MethodType::BACKEND_EXECUTE,
                                  MethodType::APP_EXECUTE_IPS, MethodType::BACKEND_DEINIT}));
}

TEST(Content, TimesAndSequenceNumbersIncrease) {
  const MadeLog log = MadeLog::withOptions("--graphs 2 --async --components --binary-sections 2");
  const std::vector<const schema::Message*> messages = log.messages();
  for (std::size_t i = 0; i < messages.size(); ++i) {
    EXPECT_EQ(messages[i]->header()->sequenceNumber(), i);
    if (i > 0) {
      EXPECT_GT(messages[i]->header()->timestamp(), messages[i - 1]->header()->timestamp()) << i;
    }
    const schema::AppMetrics* metrics = messages[i]->appMetrics();
    EXPECT_LE(metrics->startMem(), metrics->stopMem());
    if (metrics->stopTime() != 0) {
      EXPECT_LT(metrics->startTime(), metrics->stopTime()) << i;
      EXPECT_LT(metrics->stopTime(), messages[i]->header()->timestamp()) << i;
    }
  }
}

TEST(Content, ExecutionsAreCountedPerGraph) {
  const MadeLog log = MadeLog::withOptions("--graphs 6 --executions 3");
  std::map<std::string, int> executions;
  for (const schema::Message* message : log.messagesOf(MethodType::BACKEND_EXECUTE)) {
    ++executions[message->graphName()->str()];
  }
  EXPECT_EQ(executions, (std::map<std::string, int>{{"image_classifier", 3},
                                                    {"object_detector", 3},
                                                    {"depth_estimator", 3},
                                                    {"speech_encoder", 3},
                                                    {"image_classifier_2", 3},
                                                    {"object_detector_2", 3}}));
  EXPECT_EQ(log.messagesOf(MethodType::BACKEND_FINALIZE).size(), 6U);
}

TEST(Content, RunWithoutExecutionsHasNoInferencesPerSecond) {
  const MadeLog log = MadeLog::withOptions("--executions 0");
  EXPECT_TRUE(log.messagesOf(MethodType::BACKEND_EXECUTE).empty());
  EXPECT_TRUE(log.messagesOf(MethodType::APP_EXECUTE_IPS).empty());
}

TEST(Content, DeviceEventHasNodesAndTheirParts) {
  const MadeLog log = MadeLog::withOptions("--nodes 50");
  for (const schema::Message* message : log.messagesOf(MethodType::BACKEND_EXECUTE)) {
    const auto device = eventsOfType(message->profilingEvents(), EventType::EXECUTE_DEVICE);
    ASSERT_EQ(device.size(), 1U);
    const EventList* nodes = device[0]->subEvents();
    ASSERT_EQ(nodes->size(), 50U);
    std::set<std::string> names;
    std::uint64_t cycles = 0;
    for (const schema::Event* node : *nodes) {
      EXPECT_EQ(node->type(), EventType::NODE);
      EXPECT_EQ(node->unit(), EventUnit::CYCLES);
      names.insert(node->identifier()->str());
      cycles += node->uint64Value();
      std::uint64_t partCycles = 0;
      for (const schema::Event* part : *node->subEvents()) {
        partCycles += part->uint64Value();
      }
      EXPECT_EQ(partCycles, node->uint64Value());
    }
    EXPECT_EQ(names.size(), 50U) << "readers merge events by name";
    EXPECT_GT(device[0]->uint64Value(), cycles);
  }
}

TEST(Content, NoNodesLeaveTheDeviceEventAlone) {
  const MadeLog log = MadeLog::withOptions("--nodes 0");
  const auto* message = log.messagesOf(MethodType::BACKEND_EXECUTE).at(0);
  const auto device = eventsOfType(message->profilingEvents(), EventType::EXECUTE_DEVICE);
  ASSERT_EQ(device.size(), 1U);
  EXPECT_EQ(device[0]->subEvents(), nullptr);
}

TEST(Content, EventsAccountForNoMoreThanTheExecution) {
  const MadeLog log = MadeLog::withOptions("--async");
  for (const schema::Message* message : log.messagesOf(MethodType::BACKEND_EXECUTE_ASYNC)) {
    const EventList* events = message->profilingEvents();
    const std::uint64_t wait =
        eventsOfType(events, EventType::EXECUTE_QUEUE_WAIT).at(0)->uint64Value();
    const std::uint64_t work = eventsOfType(events, EventType::EXECUTE).at(0)->uint64Value();
    EXPECT_LT(wait + work, message->appMetrics()->stopTime() - message->appMetrics()->startTime());
  }
}

TEST(Content, SynchronousExecutionsHaveNoQueueWait) {
  const MadeLog log = MadeLog::withOptions("");
  EXPECT_TRUE(log.messagesOf(MethodType::BACKEND_EXECUTE_ASYNC).empty());
  for (const schema::Message* message : log.messagesOf(MethodType::BACKEND_EXECUTE)) {
    EXPECT_TRUE(eventsOfType(message->profilingEvents(), EventType::EXECUTE_QUEUE_WAIT).empty());
  }
}

TEST(Content, AsynchronousExecutionsAndComponentsHaveOneQueueWait) {
  const MadeLog log = MadeLog::withOptions("--async --components --graphs 2");
  EXPECT_TRUE(log.messagesOf(MethodType::BACKEND_EXECUTE).empty());
  std::vector<const schema::Message*> executions =
      log.messagesOf(MethodType::BACKEND_EXECUTE_ASYNC);
  EXPECT_EQ(executions.size(), 20U);
  const auto components = log.messagesOf(MethodType::BACKEND_GRAPH_COMPONENT);
  executions.insert(executions.end(), components.begin(), components.end());
  for (const schema::Message* message : executions) {
    EXPECT_EQ(eventsOfType(message->profilingEvents(), EventType::EXECUTE_QUEUE_WAIT).size(), 1U);
  }
}

TEST(Content, LatestMessageOfAGraphHasInitEvents) {
  const MadeLog log = MadeLog::withOptions("--components");
  for (const MethodType method : {MethodType::BACKEND_FINALIZE, MethodType::BACKEND_EXECUTE,
                                  MethodType::BACKEND_GRAPH_COMPONENT}) {
    const auto* message = log.messagesOf(method).back();
    EXPECT_EQ(eventsOfType(message->profilingEvents(), EventType::INIT).size(), 3U);
  }
}

TEST(Content, InferencesPerSecondComeFromDurationAndCount) {
  const MadeLog log = MadeLog::withOptions("--graphs 2 --executions 4");
  std::uint64_t duration = 0;
  for (const schema::Message* message : log.messagesOf(MethodType::BACKEND_EXECUTE)) {
    duration += message->appMetrics()->stopTime() - message->appMetrics()->startTime();
  }
  const auto messages = log.messagesOf(MethodType::APP_EXECUTE_IPS);
  ASSERT_EQ(messages.size(), 1U);
  const EventList* events = messages[0]->profilingEvents();
  ASSERT_EQ(events->size(), 2U);
  EXPECT_STREQ(events->Get(0)->identifier()->c_str(), "duration");
  EXPECT_EQ(events->Get(0)->uint64Value(), duration);
  EXPECT_EQ(events->Get(1)->uint64Value(), 8U);
}

TEST(Content, PayloadsAreInTheFirstExecutionOfEachGraph) {
  const MadeLog log = MadeLog::withOptions("--object-payloads 2 --graphs 2 --executions 2");
  std::vector<std::string> names;
  for (const schema::Message* message : log.messagesOf(MethodType::BACKEND_EXECUTE)) {
    for (const schema::Event* event :
         eventsWhere(message->profilingEvents(),
                     [](const schema::Event& any) { return any.unit() == EventUnit::OBJECT; })) {
      EXPECT_EQ(event->valueType(), EventValueType::RAW_DATA);
      EXPECT_EQ(event->rawData()->size(), 4096U);
      names.push_back(event->secondaryName()->str());
    }
  }
  EXPECT_EQ(names,
            (std::vector<std::string>{"image_classifier_trace.bin", "image_classifier_trace_2.bin",
                                      "object_detector_trace.bin", "object_detector_trace_2.bin"}));
}

TEST(Content, BinarySectionsAreAppliedToEachGraph) {
  EXPECT_TRUE(MadeLog::withOptions("").messagesOf(MethodType::APPLY_BINARY_SECTION).empty());
  const MadeLog log = MadeLog::withOptions("--binary-sections 3 --graphs 2");
  const auto messages = log.messagesOf(MethodType::APPLY_BINARY_SECTION);
  ASSERT_EQ(messages.size(), 6U);
  EXPECT_STREQ(messages[0]->graphName()->c_str(), "image_classifier");
  EXPECT_STREQ(messages[5]->graphName()->c_str(), "object_detector");
}

TEST(Content, ComponentsAreDetailMessagesWithNamesOfTheirOwn) {
  EXPECT_TRUE(MadeLog::withOptions("").messagesOf(MethodType::BACKEND_GRAPH_COMPONENT).empty());
  const MadeLog log = MadeLog::withOptions("--components");
  const auto messages = log.messagesOf(MethodType::BACKEND_GRAPH_COMPONENT);
  ASSERT_EQ(messages.size(), 2U);
  EXPECT_STREQ(messages[0]->graphName()->c_str(), "image_classifier.backbone");
  EXPECT_STREQ(messages[1]->graphName()->c_str(), "image_classifier.head");
  for (const schema::Message* message : log.messages()) {
    const bool isComponent = message->method() == MethodType::BACKEND_GRAPH_COMPONENT;
    EXPECT_EQ(message->visibilityLevel(), isComponent ? 1 : 0);
  }
}

TEST(Content, ComponentsShareTheNodesOfTheirGraph) {
  const MadeLog log = MadeLog::withOptions("--components --nodes 8");
  std::vector<std::size_t> nodeCounts;
  for (const schema::Message* message : log.messagesOf(MethodType::BACKEND_GRAPH_COMPONENT)) {
    const auto device = eventsOfType(message->profilingEvents(), EventType::EXECUTE_DEVICE);
    nodeCounts.push_back(device.at(0)->subEvents()->size());
  }
  EXPECT_EQ(nodeCounts, (std::vector<std::size_t>{6, 2}));
}

// Components report no duration that a wait could be part of.
TEST(Content, ComponentsDoNotWait) {
  const MadeLog log = MadeLog::withOptions("--components --async");
  for (const schema::Message* message : log.messagesOf(MethodType::BACKEND_GRAPH_COMPONENT)) {
    EXPECT_EQ(eventsOfType(message->profilingEvents(), EventType::EXECUTE_QUEUE_WAIT)
                  .at(0)
                  ->uint64Value(),
              0U);
  }
}

TEST(Content, ValuesAreOfAllKinds) {
  const MadeLog log = MadeLog::withOptions("");
  std::set<EventValueType> kinds;
  for (const schema::Message* message : log.messages()) {
    for (const schema::Event* event :
         eventsWhere(message->profilingEvents(), [](const schema::Event&) { return true; })) {
      kinds.insert(event->valueType());
    }
  }
  EXPECT_EQ(kinds,
            (std::set{EventValueType::NO_VALUE, EventValueType::INT64, EventValueType::UINT64,
                      EventValueType::FLOAT, EventValueType::RAW_DATA, EventValueType::DOUBLE,
                      EventValueType::STRING}));
}

}  // namespace
}  // namespace vyn::logmaker::test
