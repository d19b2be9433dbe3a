#pragma once

#include <maya/MSelectionList.h>
#include <maya/MString.h>

class OPENMAYA_EXPORT MGlobal {
public:
    static void displayInfo(const MString& text);
    static void displayWarning(const MString& text);
    static void displayError(const MString& text);

    /// "stand-in"; Maya's begins with a digit.
    static MString mayaVersion();

    /// Appends the node of a name, with its namespaces and, for one in the DAG, as much of its path as tells it from
    /// others.
    static MStatus getSelectionListByName(const MString& name, MSelectionList& list);
    /// Replaces a list by what is selected.
    static MStatus getActiveSelectionList(MSelectionList& list, bool orderedSelectionIfAvailable = false);
};
