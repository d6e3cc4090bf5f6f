// SPDX-License-Identifier: Apache-2.0
// ImageProcessingPipeline: linking, order of start and stop, ownership.

#include <libs/IPPCoreLib/ImageProcessingNode.h>
#include <libs/IPPCoreLib/ImageProcessingPipeline.h>
#include <libs/IPPCoreLib/NodeData.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;

using Log = std::vector<std::string>;

class LoggingNode : public ImageProcessingNode
{
public:
    LoggingNode(Log& log, const std::string& name)
        : _log(log)
    {
        SetName(name);
    }

    ~LoggingNode() override { _log.push_back("delete " + Name()); }

    void StartProcessing() override { _log.push_back("start " + Name() + " with " + std::to_string(Size())); }
    void StopProcessing() override { _log.push_back("stop " + Name() + " with " + std::to_string(Size())); }
    void Close() override { _log.push_back("close " + Name()); }
    void Process(NodeData*) override {}

private:
    Log& _log;
};

class Pipeline : public testing::Test
{
protected:
    Log log;
    LoggingNode* const a = new LoggingNode(log, "a");
    LoggingNode* const b = new LoggingNode(log, "b");
    LoggingNode* const c = new LoggingNode(log, "c");
};

class PipelineOfThree : public Pipeline
{
protected:
    PipelineOfThree()
    {
        pipeline.AddNode(a);
        pipeline.AddNode(b);
        pipeline.AddNode(c);
    }

    ImageProcessingPipeline pipeline;
};

TEST_F(PipelineOfThree, AddNodeLinksToTheLastNode)
{
    EXPECT_EQ(a->InputNode(), nullptr);
    EXPECT_EQ(b->InputNode(), a);
    EXPECT_EQ(c->InputNode(), b);
}

TEST_F(Pipeline, AddNodeToAnEmptyPipelineLeavesTheInputUntouched)
{
    b->SetInputNode(a);
    ImageProcessingPipeline pipeline;
    pipeline.AddNode(b);
    EXPECT_EQ(b->InputNode(), a);
    delete a;
    delete c;
}

TEST_F(PipelineOfThree, RemovingTheFirstMakesTheSecondASource)
{
    pipeline.RemoveNode(a);
    EXPECT_EQ(b->InputNode(), nullptr);
    EXPECT_EQ(c->InputNode(), b);
    delete a;
}

TEST_F(PipelineOfThree, RemovingTheMiddleLinksItsNeighbours)
{
    pipeline.RemoveNode(b);
    EXPECT_EQ(c->InputNode(), a);
    EXPECT_EQ(b->InputNode(), a) << "the removed node is left alone";
    delete b;
}

TEST_F(PipelineOfThree, RemovingTheLastRelinksNothing)
{
    pipeline.RemoveNode(c);
    EXPECT_EQ(a->InputNode(), nullptr);
    EXPECT_EQ(b->InputNode(), a);
    EXPECT_EQ(c->InputNode(), b);
    delete c;
}

TEST_F(PipelineOfThree, RemovingAnAbsentNodeChangesNothing)
{
    LoggingNode stranger(log, "stranger");
    pipeline.RemoveNode(&stranger);
    EXPECT_EQ(a->InputNode(), nullptr);
    EXPECT_EQ(b->InputNode(), a);
    EXPECT_EQ(c->InputNode(), b);
    pipeline.DeleteNodes();
    EXPECT_THAT(log, ElementsAre("close c", "delete c", "close b", "delete b", "close a", "delete a"));
}

TEST_F(Pipeline, RemovingTheOnlyNodeEmptiesThePipeline)
{
    ImageProcessingPipeline pipeline;
    pipeline.AddNode(a);
    pipeline.RemoveNode(b);
    pipeline.Start();
    EXPECT_THAT(log, ElementsAre("start a with 0")) << "another node than the only one was not removed";
    pipeline.RemoveNode(a);
    pipeline.Stop();
    EXPECT_THAT(log, ElementsAre("start a with 0")) << "neither stopped, closed nor deleted";
    delete a;
    delete b;
    delete c;
}

TEST_F(PipelineOfThree, StartClearsAllQueuesThenStartsConsumersFirst)
{
    for (LoggingNode* node : {a, b, c})
        node->OutputQueue().Push(nullptr);
    pipeline.Start();
    EXPECT_THAT(log, ElementsAre("start c with 0", "start b with 0", "start a with 0"));
    EXPECT_TRUE(pipeline.IsRunning());
}

TEST_F(PipelineOfThree, StopStopsConsumersFirstThenClearsAllQueues)
{
    pipeline.Start();
    log.clear();
    for (LoggingNode* node : {a, b, c})
        node->OutputQueue().Push(nullptr);
    pipeline.Stop();
    EXPECT_THAT(log, ElementsAre("stop c with 1", "stop b with 1", "stop a with 1"));
    EXPECT_FALSE(pipeline.IsRunning());
    for (LoggingNode* node : {a, b, c})
        EXPECT_EQ(node->Size(), 0);
}

TEST_F(Pipeline, DestructionClosesAndDeletesFromTheLastToTheFirst)
{
    {
        ImageProcessingPipeline pipeline;
        pipeline.AddNode(a);
        pipeline.AddNode(b);
        pipeline.AddNode(c);
        EXPECT_FALSE(pipeline.IsRunning());
    }
    EXPECT_THAT(log, ElementsAre("close c", "delete c", "close b", "delete b", "close a", "delete a"));
}

TEST_F(PipelineOfThree, DeleteNodesLeavesAnEmptyPipeline)
{
    pipeline.DeleteNodes();
    log.clear();
    pipeline.Start();
    pipeline.Stop();
    EXPECT_TRUE(log.empty());
}

} // namespace
