#pragma once

#include <memory>
#include <vector>

#include "quillon/RegisterInfo.h"

namespace quillon {

/// The applet's description of its parameters: a number of independent lists, each a chain of top-level groups with
/// their trees of records. Descriptions only, never values.
///
/// The store owns every record it makes, and a record its texts and arrays; all text arguments are copied. Adding
/// operations return null, with nothing done, for a list that does not exist or is finalized, and (but for
/// addGroupInfo) for a null parent. Records are changed in place at any time. No operation takes a lock, logs or sets
/// an error; memory that cannot be had leaves as std::bad_alloc.
///
/// A list index that is negative counts as one past the end does: there is no such list.
class Fg_ParameterInfo {
public:
    explicit Fg_ParameterInfo(int listCount);
    ~Fg_ParameterInfo();
    Fg_ParameterInfo(const Fg_ParameterInfo&) = delete;
    Fg_ParameterInfo& operator=(const Fg_ParameterInfo&) = delete;

    /// Empties the list and opens it for adding.
    void init(int listIndex);
    /// Releases all records of the list. The head keeps its value until init: a shell with nothing in it.
    void destroy(int listIndex);
    /// Closes the list for adding.
    void finalize(int listIndex);

    /// Makes a record that is linked to nothing. Null for a list that does not exist; a finalized list is no hindrance.
    RegisterInfo_v2* create(int listIndex, int type, const char* label, const char* symbol, int parameterId,
                            int accessFlags, int displayLevel, int exported, const char* unit);
    /// Links `child` as the last child of `parent`; nothing happens if that is not a group.
    void add(RegisterInfo* child, RegisterInfo* parent);
    /// Makes `record` the head of the list, so that the newest top-level record is met first.
    void add(RegisterInfo_v2* record, int listIndex);

    /// With a null `parent` the group goes to the head of the list.
    RegisterInfo* addGroupInfo(int listIndex, RegisterInfo* parent, const char* label);

    RegisterInfo* addInfoUInt(RegisterInfo* parent, const char* label, const char* symbol, unsigned int min,
                              unsigned int max, unsigned int inc, int accessFlags, int displayLevel, int exported,
                              const char* unit, int parameterId, int listIndex);
    RegisterInfo* addInfoInt(RegisterInfo* parent, const char* label, const char* symbol, int min, int max, int inc,
                             int accessFlags, int displayLevel, int exported, const char* unit, int parameterId,
                             int listIndex);
    RegisterInfo* addInfoUInt64(RegisterInfo* parent, const char* label, const char* symbol, unsigned long min,
                                unsigned long max, unsigned long inc, int accessFlags, int displayLevel, int exported,
                                const char* unit, int parameterId, int listIndex);
    RegisterInfo* addInfoInt64(RegisterInfo* parent, const char* label, const char* symbol, long min, long max,
                               long inc, int accessFlags, int displayLevel, int exported, const char* unit,
                               int parameterId, int listIndex);
    RegisterInfo* addInfoDouble(RegisterInfo* parent, const char* label, const char* symbol, double min, double max,
                                double inc, int accessFlags, int displayLevel, int exported, const char* unit,
                                int parameterId, int listIndex);

    /// Fields of `fieldSize` elements; `inc` is accepted and not stored.
    RegisterInfo* addInfoUIntField(RegisterInfo* parent, const char* label, const char* symbol, int fieldSize,
                                   unsigned int min, unsigned int max, unsigned int inc, int accessFlags,
                                   int displayLevel, int exported, const char* unit, int parameterId, int listIndex);
    RegisterInfo* addInfoIntField(RegisterInfo* parent, const char* label, const char* symbol, int fieldSize, int min,
                                  int max, int inc, int accessFlags, int displayLevel, int exported, const char* unit,
                                  int parameterId, int listIndex);
    RegisterInfo* addInfoDoubleField(RegisterInfo* parent, const char* label, const char* symbol, int fieldSize,
                                     double min, double max, double inc, int accessFlags, int displayLevel,
                                     int exported, const char* unit, int parameterId, int listIndex);

    /// `value` may be null; the record then holds none.
    RegisterInfo* addInfoString(RegisterInfo* parent, const char* label, const char* symbol, const char* value,
                                int accessFlags, int displayLevel, int exported, const char* unit, int parameterId,
                                int listIndex);
    /// Makes room for `entryCount` entries, all empty.
    RegisterInfo* addInfoEnum(RegisterInfo* parent, const char* label, const char* symbol, int entryCount,
                              int accessFlags, int displayLevel, int exported, const char* unit, int parameterId,
                              int listIndex);
    /// Sets or replaces entry `entry` (from 0) of an Enum; `name` may be null. 0, or BufferTooSmall (-500) when a text
    /// could not be stored. The index is not judged: an entry that the record has no room for is dropped, with 0.
    int addEnumNameValue(RegisterInfo* info, int entry, const char* label, int value, const char* name);

    /// The head of the list, or null.
    RegisterInfo* getRegisterInfo(int listIndex) const;
    /// The record behind `current`, or the head for null.
    RegisterInfo* getNextRegisterInfo(RegisterInfo* current, int listIndex) const;

    /// A null and an empty text both clear the field.
    void setDescription(RegisterInfo* info, const char* text);
    void setToolTip(RegisterInfo* info, const char* text);
    void setGenICamName(RegisterInfo* info, const char* text);
    void setGenICamVisibility(RegisterInfo* info, int visibility);
    /// Gives a record, such as a group, another symbol; null clears it.
    void setSymbol(RegisterInfo* info, const char* symbol);

    /// Makes room for `capacity` names; never shrinks.
    void setInvalidatingNameCapacity(RegisterInfo* info, unsigned int capacity);
    /// Appends a name; a null or empty one is ignored. The room grows, to its double, only when it is already exceeded:
    /// whoever needs a certain capacity reserves it first.
    void addInvalidatingName(RegisterInfo* info, const char* name);

    /// Every record made for the list, in order of making. A UIntField stands here twice.
    const std::vector<RegisterInfo_v2*>& ownedRecords(int listIndex) const {
        return owned.at(static_cast<std::size_t>(listIndex));
    }

private:
    bool hasList(int listIndex) const { return listIndex >= 0 && listIndex < listCount; }
    bool isOpen(int listIndex) const { return hasList(listIndex) && !finalized[static_cast<std::size_t>(listIndex)]; }

    template <typename FillValuePart>
    RegisterInfo* addTyped(RegisterInfo* parent, int type, const char* label, const char* symbol, int accessFlags,
                           int displayLevel, int exported, const char* unit, int parameterId, int listIndex,
                           FillValuePart fillValuePart);

    std::int32_t listCount;
    std::vector<RegisterInfo*> heads;
    std::vector<std::vector<RegisterInfo_v2*>> owned;
    std::vector<bool> finalized;
    /// Heads that outlived their list's records, emptied, so that a head is never a stale pointer.
    std::vector<std::unique_ptr<RegisterInfo>> shells_;
};

}  // namespace quillon
