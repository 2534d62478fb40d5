#pragma once

#include "values/typed_array.h"

// Lists of identifiers, each with findByID. Another needs one line.
class CAssignedRiskIDArray : public orvane::CIDArrayOf<CAssignedRiskIDArray, CAssignedRiskID> {};
class CCompanyIDArray : public orvane::CIDArrayOf<CCompanyIDArray, CCompanyID> {};
class CEntityIDArray : public orvane::CIDArrayOf<CEntityIDArray, CEntityID> {};
class CResourceIDArray : public orvane::CIDArrayOf<CResourceIDArray, CResourceID> {};
class CRiskIDArray : public orvane::CIDArrayOf<CRiskIDArray, CRiskID> {};
class CTaskIDArray : public orvane::CIDArrayOf<CTaskIDArray, CTaskID> {};
class CUserIDArray : public orvane::CIDArrayOf<CUserIDArray, CUserID> {};
