#pragma once

#include "values/typed_array.h"

// Lists of identifiers, each with findByID. Another needs two lines here and its form in documents in the source.
// clang-format off
class CAssignedRiskIDArray : public orvane::CIDArrayOf<CAssignedRiskIDArray, CAssignedRiskID>
{ public: void xmlSerialize(CProjectXMLArchive & archive) override; };
class CCompanyIDArray : public orvane::CIDArrayOf<CCompanyIDArray, CCompanyID>
{ public: void xmlSerialize(CProjectXMLArchive & archive) override; };
class CEntityIDArray : public orvane::CIDArrayOf<CEntityIDArray, CEntityID>
{ public: void xmlSerialize(CProjectXMLArchive & archive) override; };
class CResourceIDArray : public orvane::CIDArrayOf<CResourceIDArray, CResourceID>
{ public: void xmlSerialize(CProjectXMLArchive & archive) override; };
class CRiskIDArray : public orvane::CIDArrayOf<CRiskIDArray, CRiskID>
{ public: void xmlSerialize(CProjectXMLArchive & archive) override; };
class CTaskIDArray : public orvane::CIDArrayOf<CTaskIDArray, CTaskID>
{ public: void xmlSerialize(CProjectXMLArchive & archive) override; };
class CUserIDArray : public orvane::CIDArrayOf<CUserIDArray, CUserID>
{ public: void xmlSerialize(CProjectXMLArchive & archive) override; };
// clang-format on
