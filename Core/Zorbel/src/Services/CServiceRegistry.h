#pragma once

#include <Zorbel/CStringT.h>
#include <Zorbel/ITypeRegistration.h>

#include <cstdint>
#include <list>
#include <memory>
#include <vector>

#include "BasePool/CbMap.h"

namespace Zorbel {

/// The service registrations of a factory: for each interface a list, in the order in which they answer. A list is
/// never empty. Registering and releasing take no longer when there are many. Thread: guarded by its owner. No code of
/// plug-ins is called.
class CServiceRegistry {
 public:
  using Registration = std::shared_ptr<ITypeRegistration>;

  CServiceRegistry() = default;
  CServiceRegistry(const CServiceRegistry&) = delete;
  CServiceRegistry& operator=(const CServiceRegistry&) = delete;

  /// Throws: std::bad_alloc, `CbExceptionContainer`; nothing is changed then.
  void Insert(const char* typeId, bool front, const Registration& registration);

  /// Undoes the last insertion at the front of the interface's list.
  void RemoveFirst(const char* typeId) noexcept;

  /// Returns whether a registration of the interface holds `instance`.
  bool Holds(const char* typeId, const std::shared_ptr<IObject>& instance) const;

  /// Removes the first registration of each interface that holds `instance`, and returns them in the order of the map.
  /// Throws: std::bad_alloc, with nothing changed.
  std::vector<Registration> Release(const std::shared_ptr<IObject>& instance);

  /// Returns the registration at position `index`, or null.
  Registration Find(const char* typeId, unsigned int index);
  unsigned int GetCount(const char* typeId) const;

  bool IsEmpty() const { return m_lists.GetCount() == 0; }
  void Swap(CServiceRegistry& other) noexcept;

  /// Forgets what is left without releasing it, for instances whose destructors go on registering others.
  void Abandon() noexcept;

 private:
  struct SList;

  /// A registration in one list. The same one may stand in several, or several times in one.
  struct SPlace {
    SPlace(const Registration& entered, SList& holder, std::int64_t order)
        : registration(entered), list(&holder), position(order) {}

    Registration registration;
    SList* list;
    std::int64_t position;         // grows along the list
    SPlace* nextOfSame = nullptr;  // another place of the registration
    std::list<SPlace>::iterator self;
  };

  struct SList {
    std::list<SPlace> places;
    std::int64_t nextFront = -1;
    std::int64_t nextBack = 0;
    std::vector<SPlace*> byIndex;  // all of the above, or empty: made when it is asked for
    const CbMapTypes::SAssociation<CStringT<char>, SList>* association = nullptr;  // where the map keeps this list
  };

  static SPlace& Enter(SList& list, bool front, const Registration& registration);
  void Index(SPlace& place);
  void Forget(SPlace& place) noexcept;
  Registration Remove(SPlace& place) noexcept;
  std::vector<SPlace*> FirstPlacesOf(const std::shared_ptr<IObject>& instance) const;

  CbMap<CStringT<char>, SList> m_lists;
  CbMap<const void*, SPlace*> m_places;  // by registration
};

}  // namespace Zorbel
