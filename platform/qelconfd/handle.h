/// What is behind the handle and the framework object of an instance.
#pragma once

#include "data_tree.h"
#include "qelconfd.h"
#include "socket.h"

class QelConfdInterface {
  public:
    explicit QelConfdInterface(const local_platform::DataTree& running) : running_(running) {}

    const local_platform::DataTree& running() const { return running_; }

  private:
    local_platform::DataTree running_;
};

struct qelconfd {
    local_platform::Socket maapi;
    QelConfdInterface framework;
};
