#include "Reader/SLoad.h"

#include "Errors/CXMLResourceOrigin.h"
#include "Errors/Raise.h"

namespace Zorbel::Internal {

void SLoad::CountFile() {
  if (++m_files > kMostFiles) {
    Raise({kResourceFile, kResourceConstructor}, L"Configuration reads more than 100000 files");
  }
}

void SLoad::CountPass() {
  if (++m_passes > kMostPasses) {
    Raise({kResourceFile, kContainerFunction}, L"Configuration runs more than 4000000 loop passes");
  }
}

}  // namespace Zorbel::Internal
