// Sockets and sessions: what is open, for how long, and what of it a hook sees.
#include "socket.h"

#include "call_hook.h"
#include "confd_maapi.h"
#include "instance.h"
#include "platform_error.h"
#include "support.h"

using namespace local_platform;

namespace {

TEST(Socket, IsOpenUntilItGoesOrIsClosed) {
    const DataTree tree(router_model());
    ASSERT_EQ(open_sockets(), 0);
    int released = -1;
    {
        Socket first = Socket::maapi(tree);
        EXPECT_EQ(first.number(), 0) << "a number like any other";
        Socket second = Socket::cdb(tree);
        const Socket moved(std::move(first));
        EXPECT_EQ(open_sockets(), 2);
        released = second.release();
    }
    EXPECT_EQ(open_sockets(), 1) << "the released one";
    EXPECT_EQ(cdb_exists(released, "/config"), 0);
    close_socket(released);
    close_socket(released);
    EXPECT_EQ(open_sockets(), 0);
    EXPECT_EQ(cdb_exists(released, "/config"), CONFD_ERR);
}

TEST(Session, IsOpenForItsLifetimeAndShowsItsFlag) {
    const DataTree running = tree_of(router_model(), {{"/config/interface/l3{a}"}});
    const Instance instance(DataTree(router_model()), running);
    EXPECT_EQ(qelconfd_maapi_socket_get(instance.handle()), 0);
    EXPECT_EQ(qelconfd_maapi_socket_get(nullptr), -1);
    EXPECT_EQ(qelconfd_instance_get(nullptr), nullptr);
    QelConfdInterface* const iface = qelconfd_instance_get(instance.handle());
    std::string seen;
    for (const bool flag : {true, false}) {
        const ScopedCallHook hook([&](const Call& call) {
            seen += call.flag ? "flag " : "";
            return std::optional<Answer>();
        });
        QelConfdCdbSessionBase session(iface, CDB_RUNNING, flag);
        EXPECT_EQ(cdb_exists(session.Socket(), "/config/interface/l3{a}"), 1);
        EXPECT_EQ(open_sockets(), 2);
    }
    EXPECT_EQ(seen, "flag ");
    EXPECT_EQ(open_sockets(), 1) << "the instance's";
    EXPECT_LT(QelConfdCdbSessionBase(nullptr, CDB_RUNNING, true).Socket(), 0);
    EXPECT_LT(QelConfdCdbSessionBase(iface, static_cast<cdb_db_type>(0), true).Socket(), 0);
}

}  // namespace
