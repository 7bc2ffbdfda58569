/// What an edit makes of a running configuration: RFC 6241, section 7.2, and RFC 7950, sections
/// 7.5.8, 7.6.7, 7.7.9, 7.8.6 and 7.9.
#pragma once

#include "configuration/data_builder.h"

/// Applies an edit to the tree of the running configuration, node by node. Nodes that the edit
/// holds get its origin, all others keep theirs. Throws InputError for an operation that its node
/// does not allow: `data-exists`, `data-missing`, `missing-instance`.
class Edit final : public NodeSink {
  public:
    /// `sources` are the edit's file and the running file, `tree` what the latter holds; both must
    /// outlive this.
    Edit(const Sources& sources, DataForest& tree, EditOperation default_operation);

    void open(const FileNode& node, const std::vector<FileNode>& keys) override;
    void add(const FileNode& node) override;
    void close() override { levels_.pop_back(); }

  private:
    /// A container or entry of the edit that has not ended, and what it means.
    struct Level {
        FileNode node;
        std::string words;  ///< the way to it, as "port s 1"
        EditOperation operation = EditOperation::inherited;
        lyd_node* target = nullptr;  ///< null at the top, and for a container that is not there yet
        bool is_removed = false;     ///< with all that the edit has below it
    };

    Level level_of(const FileNode& node, const std::vector<FileNode>& keys);
    lyd_node* find(const FileNode& node, const std::vector<FileNode>& keys);
    void apply(Level& level, const std::vector<FileNode>& keys);
    void touch(const Level& level, const std::vector<FileNode>& keys) const;
    lyd_node* make(const Level& level, const std::vector<FileNode>& keys);
    void remove_other_cases(const FileNode& node, lyd_node* parent);
    void clear(lyd_node& entry);
    void place(const Level& level);
    lyd_node* anchor_of(const Level& level);
    [[noreturn]] void refuse(const Level& level, const std::string& what_is_wrong) const;

    const Sources& sources_;
    NodeMaker maker_;
    DataForest& tree_;
    std::vector<Level> levels_;  ///< the first is the configuration
};
