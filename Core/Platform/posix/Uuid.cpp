#include "Platform/Uuid.h"

#include <pthread.h>
#include <sys/random.h>

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstring>

namespace Platform {
namespace {

struct SUuid {
  unsigned char bytes[16];
};

bool DrawRandomBytes(unsigned char* bytes, std::size_t count) {
  while (count > 0) {
    const ssize_t drawn = getrandom(bytes, count, 0);
    if (drawn < 0 && errno == EINTR) {
      continue;
    }
    if (drawn <= 0) {
      return false;
    }
    bytes += drawn;
    count -= static_cast<std::size_t>(drawn);
  }
  return true;
}

// The random bytes of the next UUIDs of one thread, drawn together: a call of the system costs more than all the rest.
class CRandomBlock {
 public:
  bool Take(SUuid& uuid) {
    if (m_left == 0 && !Refill()) {
      return false;
    }
    SUuid& next = m_uuids[--m_left];
    uuid = next;
    explicit_bzero(&next, sizeof next);  // nobody finds in memory what was handed out
    return true;
  }

  void Drop() { m_left = 0; }

 private:
  bool Refill();

  static constexpr std::size_t kCount = 64;
  SUuid m_uuids[kCount];
  std::size_t m_left;
};

thread_local CRandomBlock block{};

// A forked child has the block of the thread that forked, and would give the same UUIDs as its parent.
bool DropBlockWhenForked() {
  static std::atomic<bool> registered{false};
  if (!registered) {
    registered = pthread_atfork(nullptr, nullptr, [] { block.Drop(); }) == 0;
  }
  return registered;
}

bool CRandomBlock::Refill() {
  if (!DropBlockWhenForked() || !DrawRandomBytes(m_uuids[0].bytes, sizeof m_uuids)) {
    return false;
  }
  m_left = kCount;
  return true;
}

// Version 4, of the common variant.
void MarkAsRandom(SUuid& uuid) {
  uuid.bytes[6] = static_cast<unsigned char>((uuid.bytes[6] & 0x0FU) | 0x40U);
  uuid.bytes[8] = static_cast<unsigned char>((uuid.bytes[8] & 0x3FU) | 0x80U);
}

std::string Text(const SUuid& uuid) {
  constexpr const char* kDigits = "0123456789abcdef";
  std::string text;
  for (const unsigned char byte : uuid.bytes) {
    if (text.size() == 8 || text.size() == 13 || text.size() == 18 || text.size() == 23) {
      text.push_back('-');
    }
    text.push_back(kDigits[byte >> 4U]);
    text.push_back(kDigits[byte & 0x0FU]);
  }
  return text;
}

}  // namespace

bool CreateUuidText(std::string& text) {
  SUuid uuid;
  if (!block.Take(uuid)) {
    return false;
  }
  MarkAsRandom(uuid);
  text = Text(uuid);
  return true;
}

}  // namespace Platform
