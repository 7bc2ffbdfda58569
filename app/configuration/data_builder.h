/// libyang's tree of what files hold.
#pragma once

#include <array>
#include <memory>
#include <string>

#include "configuration/configuration.h"
#include "configuration/node_sink.h"

struct lyd_node;

struct DataDeleter {
    void operator()(lyd_node* node) const;
};

/// The nodes at the top, in the one place that knows which of them is the first.
class DataForest {
  public:
    lyd_node* first() const { return first_.get(); }

    /// The first node below `parent`, which is null for the top; null when there is none.
    lyd_node* first_below(lyd_node* parent) const;
    void insert(lyd_node* parent, lyd_node* node);
    void remove(lyd_node* node);

    /// Validates all of it as a configuration, adding default values, and returns whether the model
    /// allows it.
    bool validate(const struct ly_ctx& context);

  private:
    std::unique_ptr<lyd_node, DataDeleter> first_;
};

/// Makes nodes of libyang's, whose `priv` is the mark of their origin. Throws InputError, naming
/// the place, for values that the model does not allow.
class NodeMaker {
  public:
    explicit NodeMaker(const Sources& sources) : sources_(sources) {}

    /// A node of `forest` below `parent`, the last of its kind there.
    lyd_node* make(DataForest& forest, lyd_node* parent, const FileNode& node,
                   const std::vector<FileNode>& keys = {});

    /// An entry of a list that may be put below `parent`, and is of no tree.
    std::unique_ptr<lyd_node, DataDeleter> make_entry(lyd_node* parent, const FileNode& node,
                                                      const std::vector<FileNode>& keys);

    [[noreturn]] void refuse(const FileNode& node, const std::string& what_is_wrong) const;

  private:
    static constexpr std::size_t kMostKeys = 16;

    lyd_node* new_list(lyd_node* parent, const FileNode& node, const std::vector<FileNode>& keys);
    lyd_node* new_value(lyd_node* parent, const FileNode& node);
    void require_kind(const FileNode& leaf) const;
    [[noreturn]] void refuse_value(const FileNode& leaf) const;

    const Sources& sources_;
    std::array<std::string, kMostKeys> texts_;
};

/// Builds the tree of a whole configuration.
class DataBuilder final : public NodeSink {
  public:
    DataBuilder(const Sources& sources, DataForest& forest)
        : sources_(sources), maker_(sources), forest_(forest) {}

    void open(const FileNode& node, const std::vector<FileNode>& keys) override;
    void add(const FileNode& node) override;
    void close() override;

  private:
    void require_new(lyd_node* made, const FileNode& node) const;

    const Sources& sources_;
    NodeMaker maker_;
    DataForest& forest_;
    lyd_node* parent_ = nullptr;
};
