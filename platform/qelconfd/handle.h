/// What is behind the handle and the framework object of an instance.
#pragma once

#include "data_tree.h"
#include "qelconfd.h"
#include "socket.h"

class QelConfdInterface {
  public:
    local_platform::DataTree running;
};

struct qelconfd {
    local_platform::Socket maapi;
    QelConfdInterface framework;
};
