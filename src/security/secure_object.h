#pragma once

#include "platform/project_xml_archive.h"
#include "values/record.h"

// Two records that stand, empty, in documents. Nothing is decided by them.
class CSecureObject : public orvane::CRecord<CSecureObject>, public IProjectXMLTagProcessor
{
public:
    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    friend class orvane::CRecord<CSecureObject>;
    template <class Visit>
    static void describe(Visit && visit);
};
extern template class orvane::CRecord<CSecureObject>;

class CSecurityGuard : public orvane::CRecord<CSecurityGuard>, public IProjectXMLTagProcessor
{
public:
    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    friend class orvane::CRecord<CSecurityGuard>;
    template <class Visit>
    static void describe(Visit && visit);
};
extern template class orvane::CRecord<CSecurityGuard>;
