/// The one place that names the platform's headers: ConfD, the host framework and the address
/// types, of the local platform or of a router SDK.
#pragma once

#include <confd_lib.h>

#include <confd_cdb.h>
#include <confd_maapi.h>
#include <nettypes/ipv4_addr_mask.h>
#include <nettypes/ipv6_addr_mask.h>
#include <nettypes/mac_addr.h>
#include <qelconfd.h>
