/// Configurations of the tests' own model, as text.
#pragma once

#include "configuration/yang_model.h"
#include "errors/input_error.h"
#include "folder.h"

inline const YangModel& test_model() {
    static const YangModel model(TEST_YANG_DIR);
    return model;
}

inline std::shared_ptr<SourceText> source(const std::string& name, const std::string& text) {
    return std::make_shared<SourceText>(name, text);
}

inline Configuration read(const std::string& text, const ReadOptions& options = {}) {
    return test_model().read(source("file", text), options);
}

/// What is wrong with `text`, empty when the model allows it.
inline std::string complaint_about(const std::string& text, const ReadOptions& options = {}) {
    return refusal_of([&] { read(text, options); });
}

/// The place of the node at `path`.
inline std::string place_of(const Configuration& configuration, const std::string& path) {
    const local_platform::Node* const node = configuration.tree.find(path);
    return node == nullptr ? "absent" : text_of(configuration.location_of(*node));
}

/// `xml` with the namespaces that NETCONF and the model have.
inline std::string named(std::string xml) {
    xml = replaced(xml, "BASE", "urn:ietf:params:xml:ns:netconf:base:1.0");
    xml = replaced(xml, "NMDA", "urn:ietf:params:xml:ns:yang:ietf-netconf-nmda");
    xml = replaced(xml, "YANG", "urn:ietf:params:xml:ns:yang:1");
    xml = replaced(xml, "OPTICS", "urn:libvrrp-valid:test:optics");
    return replaced(xml, "DEVICE", "urn:libvrrp-valid:test:device");
}
