/*
 * service_tables.h: the tables that interface_get hands out. They are constants; giving one back is
 * a formality, which their first slots share.
 */
#ifndef SERVICE_TABLES_H
#define SERVICE_TABLES_H

#include "zvsdk_manager.h"

namespace manager {

template <class Table>
zvsdk_status table_release(const Table*) {
  return 0;
}

extern const zvsdk_license_interface license_table;              // licence_policy.cc
extern const zvsdk_errorinfo_interface errorinfo_table;          // error_record.cc
extern const zvsdk_handlemanager_interface handlemanager_table;  // handlemanager.cc
extern const zvsdk_userinfo_interface userinfo_table;            // userinfo.cc
extern const zvsdk_listmanager_interface listmanager_table;      // listmanager.cc
extern const zvsdk_zdo_interface zdo_table;                      // zdo_interface.cc
extern const zvsdk_serialization_interface serialization_table;  // serialization.cc
extern const zvsdk_storage_interface storage_table;              // storage/storage_interface.cc

}  // namespace manager

#endif
