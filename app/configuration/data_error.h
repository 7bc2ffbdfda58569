/// What libyang says about data that a model does not allow.
#pragma once

#include "configuration/data_builder.h"
#include "errors/input_error.h"

struct ly_ctx;

/// The first error that `context` noted since its errors were last cleared, at the node of `data`
/// that it is about, and what is wrong. The later ones follow from it.
InputError data_error(const ly_ctx& context, const DataForest& data, const Sources& sources);
