#pragma once

#include <string>
#include <typeinfo>

#include "foundation/export.h"

class gmPersistent;

/// Registers a class with the archives: they name it by its C++ name and make objects of it through `make`.
/// Each class has one, a static member called sExemplar; the registration lasts as long as that object.
/// No library may be loaded or unloaded while another thread uses an archive: the table has no lock.
class MOKSTD_API gm_Instantiator {
  public:
    gm_Instantiator(const std::type_info& type, gmPersistent* (*factory)());
    gm_Instantiator(const gm_Instantiator&) = delete;
    gm_Instantiator& operator=(const gm_Instantiator&) = delete;
    ~gm_Instantiator();

    /// A new object of the class of that name, the caller's to delete; null when no such class is registered.
    static gmPersistent* make(const std::string& className);
    static bool isRegistered(const std::string& className);

    /// The C++ name of a class, for example "gmContourDefs::BadParams". It lives as long as the process.
    static const std::string& className(const std::type_info& type);

  private:
    const std::string& name_;
};
