/// The platform calls of a request without the plug-in around them.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "rule_request.h"

class BareCalls {
  public:
    /// Makes `request` once and notes its calls. It must outlive the object.
    explicit BareCalls(RuleRequest& request);
    BareCalls(BareCalls&& other) noexcept;
    ~BareCalls();

    /// Makes the same calls in the same order, their paths ready-made.
    void make();

    std::size_t count() const { return calls_.size(); }
    /// Those that a router's platform answers over a socket: MAAPI and CDB.
    std::size_t socket_calls() const;
    /// The different paths among their arguments.
    std::size_t paths() const;

  private:
    struct Operands;
    struct Operation;
    struct BareCall {
        const Operation* operation;
        std::string path;
    };
    static const Operation kOperations[];

    std::unique_ptr<Operands> operands_;
    std::vector<BareCall> calls_;
};
