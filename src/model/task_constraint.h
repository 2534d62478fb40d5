#pragma once

#include "platform/project_xml_archive.h"
#include "values/enumerations.h"
#include "values/record.h"

// The limit that a task itself sets on being moved.
class CTaskConstraint : public orvane::CRecord<CTaskConstraint>, public IProjectXMLTagProcessor
{
public:
    CTaskConstraint() = default;
    explicit CTaskConstraint(CTaskConstraintType const & type) : type(type) {}

    CTaskConstraintType const & getType() const { return type; }
    void setType(CTaskConstraintType const & value) { type = value; }

    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    friend class orvane::CRecord<CTaskConstraint>;
    template <class Visit>
    static void describe(Visit && visit);

    CTaskConstraintType type{CTaskConstraintType::NoConstraint};
};

extern template class orvane::CRecord<CTaskConstraint>;
