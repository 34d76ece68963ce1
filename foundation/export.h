// Export macros of the foundation libraries. Everything else is built hidden; what bears one of these is
// part of a library's public interface, its type information included, so that catch and dynamic_cast work
// across libraries.
#pragma once

#define MOKSTD_API __attribute__((visibility("default")))
#define MOKIP_API __attribute__((visibility("default")))
#define MOKDISPC_API __attribute__((visibility("default")))
