// Models that would let something go not_checked are refused.
#include <gmock/gmock.h>

#include "support.h"

namespace {

/// What is wrong with a model of `modules`, whose bodies stand in for a whole module each.
std::string complaint_about_model(const std::vector<std::string>& bodies) {
    const Folder folder;
    std::filesystem::copy(VALIDATION_POINT, folder.path);
    std::string name = "a";
    for (const std::string& body : bodies) {
        folder.put(name + ".yang",
                   "module " + name + " { yang-version 1.1; namespace \"urn:" + name +
                       "\"; prefix " + name + "; import validation-point { prefix \"v\"; }\n" +
                       body + "\n}\n");
        ++name[0];
    }
    std::string complaint;
    const std::string refusal = refusal_of([&] {
        for (const std::string& rule : YangModel(folder.path).rule_names()) {
            complaint += "uses " + rule + " ";
        }
    });
    return complaint + replaced(refusal, folder / "", "");
}

TEST(Model, UsesValidationPointsWhereTheyAreSeen) {
    const std::string use = "v:validate \"p\" { v:opaque \"x\"; }";
    const std::vector<std::pair<std::vector<std::string>, std::string>> rows = {
        {{"leaf l { type string; " + use + " }"}, "uses x "},
        {{"grouping g { leaf l { type string; " + use +
          " } } container c { uses g { refine l {"
          " description \"// {\"; } } } /* } */ container e { uses g; }"},
         "uses x "},
        {{"container c { leaf l { type string; description 'it' { v:secret; } " + use + " } }",
          "import a { prefix a; } deviation /a:c/a:l { deviate add { default 'k'; } }"},
         "uses x "},
        {{"container c; augment /c { leaf l { type string; " + use + " } }"}, "uses x "},
        {{"grouping g { leaf l { type string; } } container c { uses g { refine l {\n " + use +
          " } } }"},
         "a: l: a validation point is used where its rule would not run"},
        {{"container c; augment /c {\ndescription '} // {' + \"\\\"; }\"; " + use + "}"},
         "a: c: a validation point is used where"},
        {{"leaf l { type string; }", "import a { prefix a; }\ndeviation /a:l { " + use +
                                         " deviate add "
                                         "{ units 'u'; } }"},
         "a: l: a validation point is used where"},
        {{"leaf l { type string; }",
          "import a { prefix a; } deviation /a:l { deviate add { " + use + " } }"},
         "b: deviation /a:l: a validation point is used where"},
        {{"leaf-list l { type string; " + use + " }"}, "a: l: a validation point is used where"},
        {{"rpc r { input { leaf l { type string; " + use + " } } }"}, "a: l: a validation"},
        {{"container c { config false; leaf l { type string; " + use + " } }"},
         "a: l: a validation"},
        {{"container c { leaf l { type string; } }",
          "import a { prefix a; } augment /a:c { leaf-list l { type string; } }"},
         "the modules a and b both have a node l in the same place"},
        {{"leaf k { type string; " + use +
          " } leaf l { type string;\n v:validate 'p' { v:error 'e' { v:help 'h'; } } }"},
         "a.yang:3: v:validate of l names no rule"},
        {{"grouping g { leaf l { type string;\n\nv:validate 'p'; } }",
          "import a { prefix a; } uses a:g;"},
         "a.yang:4: v:validate of l names no rule"},
        {{"rpc c;", "container c;"}, ""},
    };
    for (const auto& [bodies, complaint] : rows) {
        const std::string about = complaint_about_model(bodies);
        EXPECT_EQ(about.substr(0, complaint.empty() ? about.size() : complaint.size()), complaint)
            << about;
    }
}

TEST(Model, StaysTheSameForAllThreads) {
    const Folder folder;
    std::filesystem::copy(VALIDATION_POINT, folder.path);
    ContextPool pool(folder.path);
    pool.load_for(2);
    std::filesystem::remove(folder / "validation-point.yang");
    pool.borrow();  // and given back
    const auto first = pool.borrow();
    const auto second = pool.borrow();
    EXPECT_NE(first.get(), second.get());
    EXPECT_THROW(pool.borrow(), InputError);
}

}  // namespace
