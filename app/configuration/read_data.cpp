#include "configuration/read_data.h"

#include <libyang/libyang.h>

#include <optional>

#include "configuration/edit.h"
#include "errors/input_error.h"

namespace {

/// Notes what is known of a configuration that was validated: a node whose `when` an edit makes
/// false goes, where one that the edit itself writes is an error.
void note_true_whens(lyd_node* first) {
    for (lyd_node* node = first; node != nullptr; node = node->next) {
        node->flags |= lysc_has_when(node->schema) != nullptr ? LYD_WHEN_TRUE : 0U;
        note_true_whens(lyd_child(node));
    }
}

/// Reads the running file again, into a tree that an edit can be applied to.
void read_running(const ly_ctx& context, const Configuration& running, const Sources& sources,
                  DataForest& tree) {
    DataBuilder builder(sources, tree);
    // What it leaves out was told when it was first read.
    NodeReader(context, *running.sources.front(), {false, true}, 1,
               [&](bool, EditOperation) -> NodeSink& { return builder; })
        .read();
    note_true_whens(tree.first());
}

void require_editable(const std::string& edit, const Configuration* running) {
    if (running == nullptr) {
        throw InputError(edit + ": is an edit; give a complete configuration as --running");
    }
    if (running->sources.empty()) {
        throw InputError(edit +
                         ": is an edit, and there is no running configuration to edit; name it "
                         "with --running");
    }
}

}  // namespace

ReadData read_data(const ly_ctx& context, const std::shared_ptr<SourceText>& file,
                   const ReadOptions& options, const Configuration* running) {
    ReadData read{{file}, {}, false, {}};
    DataBuilder builder(read.sources, read.tree);
    std::optional<Edit> edit;
    const auto begin = [&](bool is_edit, EditOperation default_operation) -> NodeSink& {
        if (!is_edit) {
            return builder;
        }
        require_editable(file->name(), running);
        read.is_edit = true;
        read.unknown_data = running->unknown_data;
        read.sources.push_back(running->sources.front());
        if (default_operation != EditOperation::replace) {
            read_running(context, *running, read.sources, read.tree);
        }
        return edit.emplace(read.sources, read.tree, default_operation);
    };
    NodeReader reader(context, *file, options, 0, begin);
    reader.read();
    read.unknown_data.add(reader.unknown_data);
    for (const auto& [begins, ends] : reader.secrets) {
        file->hide(begins, ends);
    }
    return read;
}
