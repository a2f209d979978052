#include "support/FreshService.h"

#include <vector>

namespace {

/// Only the library can destroy an instance, and only the last one: the others are kept for good.
void keep(const DescriptionDb* instance)
{
    static auto& kept = *new std::vector<const DescriptionDb*>;
    kept.push_back(instance);
}

void setInitialLevels()
{
    DescriptionDb::m_Debug = 1;
    DescriptionDb::sqliteDb.m_dbgLevel = 1;
}

}  // namespace

FreshService::FreshService() : m_previousInstance(DescriptionDb::m_pInstance)
{
    DescriptionDb::m_pInstance = nullptr;
    setInitialLevels();
}

FreshService::~FreshService()
{
    DescriptionDb::sqliteDb.closeDb();
    setInitialLevels();
    keep(DescriptionDb::m_pInstance);
    DescriptionDb::m_pInstance = m_previousInstance;
}
