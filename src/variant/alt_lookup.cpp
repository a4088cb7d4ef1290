// The search of the forests for a model to put in place of a missing one.

#include "driver/load_time.h"
#include "variant/basib_vargon.h"

namespace {

// The default tail of a key: slew, drive and the eight one-character fields
// of the template, no special setting of any kind.
char const defaultTail[] = "axxxaaaaaaaa";

// Keys of this family have 20 characters; a shorter one has no place in a
// forest.
const std::string::size_type shortestKey = 18;

} // namespace

BASIB_ALT_MODEL_INFO* IBIS_MODEL_VARGON::getNodeForModelName(
    std::vector<BASIB_ALT_MODEL_INFO*>& roots, std::string modelName)
{
    if (modelName.empty() || modelName.size() < shortestKey)
        return nullptr;
    // Drive, pull, the eight one-character fields and the direction, level
    // by level below the root; the slew takes no part, and the walk stops
    // above the leaves.
    std::string const fields[] = {
        modelName.substr(7, 3),  modelName.substr(10, 1), modelName.substr(11, 1),
        modelName.substr(12, 1), modelName.substr(13, 1), modelName.substr(14, 1),
        modelName.substr(15, 1), modelName.substr(16, 1), modelName.substr(17, 1),
        modelName.substr(18, 3),
    };
    for (BASIB_ALT_MODEL_INFO* root : roots) {
        BASIB_ALT_MODEL_INFO* node = root;
        for (std::string const& field : fields) {
            node = node->FindChild(field);
            if (node == nullptr)
                break;
        }
        if (node != nullptr)
            return node;
    }
    return nullptr;
}

std::string IBIS_MODEL_VARGON::getNextAltModelName(BASIB_ALT_MODEL_INFO** node)
{
    if (*node == nullptr)
        return "";
    BASIB_ALT_MODEL_INFO* const start = *node;

    // The preferred sibling, if the node is not preferred itself; otherwise
    // climb to the deepest level that is not at its preferred value, reset
    // it, and go down the preferred values to a leaf.
    BASIB_ALT_MODEL_INFO* candidate = start->GetOwner()->GetFirstChild();
    if (candidate == start) {
        BASIB_ALT_MODEL_INFO* child = start;
        BASIB_ALT_MODEL_INFO* up = start->GetOwner();
        BASIB_ALT_MODEL_INFO* from = nullptr;
        while (from == nullptr) {
            if (up->GetNumChildren() > 1 && child != up->GetFirstChild())
                from = up->GetFirstChild();
            else if (up->GetOwner() != nullptr) {
                child = up;
                up = up->GetOwner();
            } else
                from = up;
        }
        candidate = from;
        while (candidate->GetNumChildren() > 0)
            candidate = candidate->GetFirstChild();
        if (candidate == start)
            return "";
    }
    *node = candidate;

    // The name: the keys from the root down, with the slew's "a" behind the
    // root. A leaf of the slew level puts its key behind the direction.
    std::string name = candidate->GetKeyValue();
    for (BASIB_ALT_MODEL_INFO* ancestor = candidate->GetOwner(); ancestor != nullptr;
         ancestor = ancestor->GetOwner()) {
        if (ancestor->GetOwner() == nullptr)
            name = std::string(ancestor->GetKeyValue()) + "a" + name;
        else
            name = ancestor->GetKeyValue() + name;
    }
    return name;
}

std::string IBIS_MODEL_VARGON::getAvailableAltModelName(std::string portType, std::string modelName)
{
    std::string model = modelName;
    std::string result;
    if (modelName.empty() || modelName.size() < shortestKey)
        return result;
    std::string const ioField = modelName.substr(0, 6);
    std::string direction = modelName.substr(18, 3);
    std::string const defaultName = ioField + defaultTail + direction;
    auto available = [this](std::string const& name) { return _availableModels.count(name) != 0; };

    // The forest of the signal's direction says whether its IO type and
    // voltage exist for that direction at all.
    BASIB_ALT_MODEL_MAP& forest =
        portType == "IN" ? _inputAltModels : portType == "OUT" ? _outputAltModels : _bidirAltModels;
    auto roots = forest.find(ioField);
    if (roots == forest.end() || roots->second == nullptr)
        return result;

    BASIB_ALT_MODEL_INFO* node = getNodeForModelName(*roots->second, model);
    if (node != nullptr) {
        do
            result = getNextAltModelName(&node);
        while (!result.empty() && !available(result));
    }

    if (portType != "OUT") {
        if (!result.empty())
            return result;
        if (model != defaultName && available(defaultName))
            result = defaultName;
    }
    if (!result.empty())
        return result;
    if (portType != "IN" && portType != "OUT")
        return result;

    direction = "io";
    model.replace(18, 3, direction);
    if (available(model))
        return model;
    model = ioField + defaultTail + "io";
    if (available(model))
        return model;
    return result;
}
