// The entities of the scene, and which of them stand for which resource.

#include "rules/local_rules_checker.h"
#include "rules/text_checks.h"
#include "scene/solids.h"

namespace
{

constexpr orvane::TextLimit entityNameLimit{1024, orvane::forbiddenInLine, orvane::Blank::allowed};

// A size as entities keep it; one that is beyond a float becomes the largest.
float toSize(double value)
{
    return static_cast<float>(
        std::clamp<double>(value, -std::numeric_limits<float>::max(), std::numeric_limits<float>::max()));
}

// False when there is none, or it is of another kind.
template <class Entity, class Change>
bool changeEntityAs(CEntity * entity, Change const & change)
{
    auto * const known = dynamic_cast<Entity *>(entity);
    if (!known) return false;
    change(*known);
    return true;
}

template <class Visit>
void visitWithAllBelow(CEntity & entity, Visit const & visit)
{
    visit(entity);
    if (orvane::CEntityList const * const list = entity.getList())
        for (auto const & child : list->entities()) visitWithAllBelow(*child, visit);
}

// Takes out every occurrence; whether there was any.
bool takeOutEntity(CEntityIDArray & entities, CEntityID const & entityID)
{
    int const before = entities.GetSize();
    CEntityIDArray kept;
    for (CEntityID const & each : entities)
        if (!(each == entityID)) kept.Add(each);
    entities = kept;
    return kept.GetSize() < before;
}

}  // namespace

CEntity * CLocalRulesChecker::getEntity(CEntityID const & id) const
{
    return project ? project->getEntity(id) : nullptr;
}

// ---- coming and going -----------------------------------------------------------------------------

bool CLocalRulesChecker::clearScene()
{
    if (!project) return false;
    projectData->scene.clear();
    if (!isTransactionServer()) presentationData->clearSelectedSceneEntity();
    return true;
}

bool CLocalRulesChecker::addEntitiesToScene(CObArray const & entities)
{
    if (!project) return false;
    for (int each = 0; each < entities.GetSize(); ++each)
    {
        CObject * const object = entities.GetAt(each);
        if (object && !projectData->scene.addEntity(dynamic_cast<CEntity *>(object))) return false;
    }
    return true;
}

bool CLocalRulesChecker::removeEntityFromScene(CEntityID const & entityID)
{
    if (!project) return false;
    projectData->scene.deleteEntity(CHandle(entityID.getGUID()));
    if (!isTransactionServer() && presentationData->getPrimarySelectedSceneEntityID() == entityID)
        presentationData->clearSelectedSceneEntity();
    return true;
}

// ---- changing -------------------------------------------------------------------------------------

bool CLocalRulesChecker::renameEntityInScene(CEntityID const & entityID, CString const & name)
{
    CEntity * const entity = getEntity(entityID);
    if (!entity || !orvane::accepts(entityNameLimit, name)) return false;
    if (!(entity->getName() == name)) entity->setName(name);
    return true;
}

bool CLocalRulesChecker::changeEntityTransform(CEntityID const & entityID, CTransform const & transform)
{
    CEntity * const entity = getEntity(entityID);
    if (!entity) return false;
    visitWithAllBelow(*entity, [&](CEntity & each) { each.setTransform(transform, 1); });
    return true;
}

// A group keeps its own.
bool CLocalRulesChecker::changeEntityMaterial(CEntityID const & entityID, CMaterial const & material)
{
    CEntity * const entity = getEntity(entityID);
    if (!entity) return false;
    auto const coat = [&](CEntity & each)
    {
        if (!each.getList()) each.setMaterial(material);
    };
    visitWithAllBelow(*entity, coat);
    return true;
}

bool CLocalRulesChecker::changeEntityBoxDimensions(CEntityID const & entityID, CPOINT2DArray const & outline,
                                                   double height)
{
    return changeEntityExtrusionDimensions(entityID, outline, height);
}

bool CLocalRulesChecker::changeEntityExtrusionDimensions(CEntityID const & entityID, CPOINT2DArray const & outline,
                                                         double height)
{
    auto const change = [&](CEntityExtrusion & extrusion)
    {
        extrusion.setPoints(outline);
        extrusion.setHeight(toSize(height));
    };
    return changeEntityAs<CEntityExtrusion>(getEntity(entityID), change);
}

bool CLocalRulesChecker::changeEntityCylinderDimensions(CEntityID const & entityID, double radius, double height)
{
    auto const change = [&](CEntityCylinder & cylinder)
    {
        cylinder.setRadius(toSize(radius));
        cylinder.setHeight(toSize(height));
    };
    return changeEntityAs<CEntityCylinder>(getEntity(entityID), change);
}

bool CLocalRulesChecker::changeEntitySphereDimensions(CEntityID const & entityID, double radius)
{
    auto const change = [&](CEntitySphere & sphere) { sphere.setRadius(toSize(radius)); };
    return changeEntityAs<CEntitySphere>(getEntity(entityID), change);
}

// ---- standing for resources -----------------------------------------------------------------------

bool CLocalRulesChecker::assignEntityToResource(CEntityID const & entityID, CResourceID const & resourceID)
{
    CResourceBase * const resource = entityID.isNULL() ? nullptr : getResourceBase(resourceID);
    if (!resource) return false;
    CEntityIDArray entities(resource->getRepresentations());
    entities.Add(entityID);
    resource->setResourceRepresentations(entities);
    return true;
}

bool CLocalRulesChecker::unassignEntityFromResource(CEntityID const & entityID, CResourceID const & resourceID)
{
    CResourceBase * const resource = getResourceBase(resourceID);
    if (!resource) return false;
    CEntityIDArray entities(resource->getRepresentations());
    if (!takeOutEntity(entities, entityID)) return false;
    resource->setResourceRepresentations(entities);
    return true;
}

bool CLocalRulesChecker::unassignAllEntitiesFromResource(CResourceID const & resourceID)
{
    if (!project || resourceID.isNULL()) return false;
    // A resource that is not there has no entities either.
    if (CResourceBase * const resource = getResourceBase(resourceID))
    {
        CEntityIDArray entities(resource->getRepresentations());
        entities.RemoveAll();
        resource->setResourceRepresentations(entities);
    }
    return true;
}

bool CLocalRulesChecker::unassignEntityFromAllResources(CEntityID const & entityID)
{
    if (!project || entityID.isNULL()) return false;
    // The argument may stand in one of the lists.
    CEntityID const id(entityID);
    bool all = true;
    auto const unassign = [&](auto const & resources)
    {
        for (auto const & each : resources) all = all && unassignEntityFromAllResources(each, id);
    };
    for (CCompany const & company : projectData->companies) company.forEachKind(unassign);
    return all;
}

// Those below first.
template <class Resource>
bool CLocalRulesChecker::unassignEntityFromAllResources(Resource const & resource, CEntityID const & entityID)
{
    if (resource.hasSubResource())
        for (Resource const & each : *resource.getSubResources())
            if (!unassignEntityFromAllResources(each, entityID)) return false;
    if (resource.getRepresentations().findByID(entityID) < 0) return true;
    CEntityIDArray entities(resource.getRepresentations());
    takeOutEntity(entities, entityID);
    Resource * const written = getWritable<Resource>(resource.getID());
    if (!written) return false;
    written->setResourceRepresentations(entities);
    return true;
}
