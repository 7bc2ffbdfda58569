// The model is the one in yang/, and all its rules are tested.
#include "model.h"

#include <gmock/gmock.h>

#include "configuration/yang_model.h"
#include "rule.h"

using local_platform::SchemaNode;

namespace {

/// `node` and all below it, a line each.
std::string text_of(const SchemaNode& node, const std::string& indent = "\n") {
    std::string text = indent + node.name + " of kind " +
                       std::to_string(static_cast<int>(node.kind)) + " and type " +
                       std::to_string(node.type) + (node.is_encrypted ? " encrypted" : "") +
                       testing::PrintToString(node.enums) + testing::PrintToString(node.keys);
    for (const SchemaNode& child : node.children) {
        text += text_of(child, indent + "  ");
    }
    return text;
}

TEST(Model, IsTheOneOfTheModulesAndAllItsRulesAreTested) {
    const YangModel model(TEST_YANG_DIR);
    EXPECT_EQ(text_of(vrrp_model()), text_of(*model.schema()));
    Lines selectors;
    for (const RuleCases& rule : rules()) {
        selectors.push_back(rule.selector);
        EXPECT_EQ(rule.cases.at(0).the<Answer>().text, ok().text) << rule.selector;
        EXPECT_NE(rule.cases.at(1).the<Answer>().text, ok().text) << rule.selector;
    }
    EXPECT_THAT(selectors, testing::UnorderedElementsAreArray(model.rule_names()));
}

}  // namespace
