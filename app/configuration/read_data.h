/// From files to libyang's tree.
#pragma once

#include "configuration/data_builder.h"
#include "configuration/node_reader.h"

/// What a file holds, or makes of a running configuration, before it is validated.
struct ReadData {
    Sources sources;
    UnknownData unknown_data;
    bool is_edit = false;
    DataForest tree;
};

/// Reads `file` in `context`, in which no other thread may make data meanwhile; what is secret in
/// it is hidden from then on. An edit is applied to `running`, which is null where none is allowed.
/// Throws InputError, naming the place.
ReadData read_data(const ly_ctx& context, const std::shared_ptr<SourceText>& file,
                   const ReadOptions& options, const Configuration* running);
