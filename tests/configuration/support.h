/// Configurations of the tests' own model, as text.
#pragma once

#include "configuration/yang_model.h"
#include "errors/input_error.h"
#include "folder.h"

inline const YangModel& test_model() {
    static const YangModel model(TEST_YANG_DIR);
    return model;
}

inline Document read(const std::string& text, const ReadOptions& options = {}) {
    return test_model().parse(configuration_from_bytes("file", text), options);
}

/// What is wrong with `text`, empty when the model allows it.
inline std::string complaint_about(const std::string& text, const ReadOptions& options = {}) {
    try {
        test_model().tree(read(text, options));
        return {};
    } catch (const InputError& error) {
        return error.what();
    }
}

/// `xml` with the namespaces that NETCONF and the model have.
inline std::string named(std::string xml) {
    xml = replaced(xml, "BASE", "urn:ietf:params:xml:ns:netconf:base:1.0");
    xml = replaced(xml, "NMDA", "urn:ietf:params:xml:ns:yang:ietf-netconf-nmda");
    xml = replaced(xml, "YANG", "urn:ietf:params:xml:ns:yang:1");
    xml = replaced(xml, "OPTICS", "urn:libvrrp-valid:test:optics");
    return replaced(xml, "DEVICE", "urn:libvrrp-valid:test:device");
}
