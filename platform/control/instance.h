/// What a host holds for one router: a candidate under validation beside a running datastore.
#pragma once

#include <memory>
#include <optional>

#include "crypto_key.h"
#include "data_tree.h"
#include "qelconfd.h"

namespace local_platform {

/// What a qelconfd_t handle stands for.
class Instance {
  public:
    Instance(const DataTree& candidate, const DataTree& running,
             const std::optional<CryptoKey>& key = {});
    ~Instance();
    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;

    qelconfd_t* handle() const { return handle_.get(); }
    int thandle() const;

  private:
    std::unique_ptr<qelconfd_t> handle_;
};

}  // namespace local_platform
