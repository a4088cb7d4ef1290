// A node of the alternate model forests.

#include <cstdio>
#include <cstring>

#include "driver/load_time.h"
#include "variant/basib_vargon.h"

BASIB_ALT_MODEL_INFO::BASIB_ALT_MODEL_INFO(std::string level, std::string key,
                                           BASIB_ALT_MODEL_INFO* owner)
    : _levelName(std::move(level)), _keyValue(std::move(key)), _owner(owner)
{
}

BASIB_ALT_MODEL_INFO::BASIB_ALT_MODEL_INFO(BASIB_ALT_MODEL_INFO* other)
    : _levelName(other->_levelName), _keyValue(other->_keyValue), _owner(other->_owner)
{
    for (BASIB_ALT_MODEL_INFO* child : other->_children)
        addChild(new BASIB_ALT_MODEL_INFO(child), false);
}

BASIB_ALT_MODEL_INFO::~BASIB_ALT_MODEL_INFO()
{
    for (BASIB_ALT_MODEL_INFO* child : _children)
        delete child;
}

void BASIB_ALT_MODEL_INFO::setLevelName(std::string level)
{
    _levelName = std::move(level);
}

void BASIB_ALT_MODEL_INFO::setKeyValue(std::string key)
{
    _keyValue = std::move(key);
}

void BASIB_ALT_MODEL_INFO::setOwner(BASIB_ALT_MODEL_INFO* owner)
{
    _owner = owner;
}

char const* BASIB_ALT_MODEL_INFO::GetLevel()
{
    return _levelName.c_str();
}

char const* BASIB_ALT_MODEL_INFO::GetKeyValue()
{
    return _keyValue.c_str();
}

BASIB_ALT_MODEL_INFO* BASIB_ALT_MODEL_INFO::GetOwner()
{
    return _owner;
}

std::vector<BASIB_ALT_MODEL_INFO*>& BASIB_ALT_MODEL_INFO::GetChildren()
{
    return _children;
}

int BASIB_ALT_MODEL_INFO::GetNumChildren()
{
    return static_cast<int>(_children.size());
}

BASIB_ALT_MODEL_INFO* BASIB_ALT_MODEL_INFO::GetFirstChild()
{
    return _children.empty() ? nullptr : _children.front();
}

BASIB_ALT_MODEL_INFO* BASIB_ALT_MODEL_INFO::FindChild(std::string key)
{
    for (BASIB_ALT_MODEL_INFO* child : _children)
        if (child->_keyValue == key)
            return child;
    return nullptr;
}

void BASIB_ALT_MODEL_INFO::addChild(BASIB_ALT_MODEL_INFO* child, bool atFront)
{
    child->_owner = this;
    if (atFront)
        _children.insert(_children.begin(), child);
    else
        _children.push_back(child);
}

void BASIB_ALT_MODEL_INFO::RemoveChildren()
{
    _children.clear();
}

void BASIB_ALT_MODEL_INFO::printMe(int indent)
{
    std::printf("%s:%s ", _levelName.c_str(), _keyValue.c_str());
    for (size_t i = 0; i < _children.size(); ++i) {
        _children[i]->printMe(indent + 9);
        if (i + 1 < _children.size())
            std::printf("\n%*s", indent, "");
    }
}

bool VARGON_ltstr::operator()(char const* a, char const* b) const
{
    return std::strcmp(a, b) < 0;
}
