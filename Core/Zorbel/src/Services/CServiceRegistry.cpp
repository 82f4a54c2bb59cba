#include "Services/CServiceRegistry.h"

#include <algorithm>
#include <atomic>
#include <iterator>
#include <new>
#include <utility>

#include "Services/CServiceConfig.h"

namespace Zorbel {

void CServiceRegistry::Insert(const char* typeId, bool front, const Registration& registration) {
  auto& association = m_lists.SetAt(typeId);
  SList& list = association.value;
  list.association = &association;
  try {
    SPlace& place = Enter(list, front, registration);
    try {
      Index(place);
    } catch (...) {
      list.byIndex.clear();
      list.places.erase(place.self);
      throw;
    }
  } catch (...) {
    if (list.places.empty()) {
      m_lists.RemoveKey(typeId);
    }
    throw;
  }
}

CServiceRegistry::SPlace& CServiceRegistry::Enter(SList& list, bool front, const Registration& registration) {
  const auto made = list.places.emplace(front ? list.places.begin() : list.places.end(), registration, list,
                                        front ? list.nextFront-- : list.nextBack++);
  made->self = made;
  const bool stillInOrder = !front && list.byIndex.size() + 1 == list.places.size();
  if (stillInOrder && list.byIndex.size() < list.byIndex.capacity()) {
    list.byIndex.push_back(&*made);
  } else {
    list.byIndex.clear();
  }
  return *made;
}

void CServiceRegistry::Index(SPlace& place) {
  SPlace*& first = m_places.SetAt(place.registration.get()).value;
  place.nextOfSame = std::exchange(first, &place);
}

void CServiceRegistry::Forget(SPlace& place) noexcept {
  const ITypeRegistration* registration = place.registration.get();
  SPlace** link = m_places.Lookup(registration);
  while (*link != &place) {
    link = &(*link)->nextOfSame;
  }
  *link = place.nextOfSame;
  if (*m_places.Lookup(registration) == nullptr) {
    m_places.RemoveKey(registration);
  }
}

CServiceRegistry::Registration CServiceRegistry::Remove(SPlace& place) noexcept {
  Forget(place);
  Registration removed = std::move(place.registration);
  SList& list = *place.list;
  if (!list.byIndex.empty() && list.byIndex.back() == &place) {
    list.byIndex.pop_back();
  } else {
    list.byIndex.clear();
  }
  list.places.erase(place.self);
  if (list.places.empty()) {
    m_lists.RemoveKey(list.association->key);
  }
  return removed;
}

void CServiceRegistry::RemoveFirst(const char* typeId) noexcept { Remove(m_lists.Lookup(typeId)->places.front()); }

bool CServiceRegistry::Holds(const char* typeId, const std::shared_ptr<IObject>& instance) const {
  const SList* list = m_lists.Lookup(typeId);
  bool found = false;
  CServiceConfig::ForEachHolder(instance, [&](const CServiceConfig& holder) {
    SPlace* const* first = m_places.Lookup(static_cast<const ITypeRegistration*>(&holder));
    for (const SPlace* place = first != nullptr ? *first : nullptr; place != nullptr; place = place->nextOfSame) {
      found = found || place->list == list;
    }
  });
  return found;
}

std::vector<CServiceRegistry::SPlace*> CServiceRegistry::FirstPlacesOf(const std::shared_ptr<IObject>& instance) const {
  std::vector<SPlace*> found;
  CServiceConfig::ForEachHolder(instance, [&](const CServiceConfig& holder) {
    SPlace* const* first = m_places.Lookup(static_cast<const ITypeRegistration*>(&holder));
    for (SPlace* place = first != nullptr ? *first : nullptr; place != nullptr; place = place->nextOfSame) {
      found.push_back(place);
    }
  });
  std::sort(found.begin(), found.end(), [this](const SPlace* a, const SPlace* b) {
    return a->list == b->list ? a->position < b->position
                              : m_lists.IsBefore(*a->list->association, *b->list->association);
  });
  const auto ofOneList = [](const SPlace* a, const SPlace* b) { return a->list == b->list; };
  found.erase(std::unique(found.begin(), found.end(), ofOneList), found.end());
  return found;
}

std::vector<CServiceRegistry::Registration> CServiceRegistry::Release(const std::shared_ptr<IObject>& instance) {
  const std::vector<SPlace*> places = FirstPlacesOf(instance);
  std::vector<Registration> removed;
  removed.reserve(places.size());
  for (SPlace* place : places) {
    removed.push_back(Remove(*place));
  }
  return removed;
}

CServiceRegistry::Registration CServiceRegistry::Find(const char* typeId, unsigned int index) {
  SList* list = typeId != nullptr ? m_lists.Lookup(typeId) : nullptr;
  if (list == nullptr || index >= list->places.size()) {
    return nullptr;
  }
  if (index == 0) {
    return list->places.front().registration;
  }
  if (list->byIndex.empty()) {
    list->byIndex.reserve(2 * list->places.size());
    std::transform(list->places.begin(), list->places.end(), std::back_inserter(list->byIndex),
                   [](SPlace& place) { return &place; });
  }
  return list->byIndex[index]->registration;
}

unsigned int CServiceRegistry::GetCount(const char* typeId) const {
  const SList* list = typeId != nullptr ? m_lists.Lookup(typeId) : nullptr;
  return list != nullptr ? static_cast<unsigned int>(list->places.size()) : 0;
}

void CServiceRegistry::Swap(CServiceRegistry& other) noexcept {
  m_lists.Swap(other.m_lists);
  m_places.Swap(other.m_places);
}

void CServiceRegistry::Abandon() noexcept {
  struct SAbandoned {
    CServiceRegistry registry;
    SAbandoned* next = nullptr;
  };
  static std::atomic<SAbandoned*> last = nullptr;  // keeps them in sight of those who look for leaks
  if (IsEmpty()) {
    return;
  }
  if (auto* abandoned = new (std::nothrow) SAbandoned) {
    Swap(abandoned->registry);
    abandoned->next = last.exchange(abandoned);
  }
}

}  // namespace Zorbel
