#pragma once

#include <maya/MArgList.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>

/// The base of a plug-in's command.
class OPENMAYA_EXPORT MPxCommand {
public:
    MPxCommand();
    virtual ~MPxCommand();
    virtual MStatus doIt(const MArgList& arguments);
    virtual MStatus undoIt();
    virtual MStatus redoIt();
    virtual bool isUndoable() const;
    virtual bool hasSyntax() const;

    /// The syntax that the command was registered with.
    MSyntax syntax() const;

    /// What the command's call yields.
    static void setResult(bool result);
    static void setResult(int result);
    static void setResult(double result);
    static void setResult(const MString& result);
    static void clearResult();
};
