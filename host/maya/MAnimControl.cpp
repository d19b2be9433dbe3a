#include <maya/MAnimControl.h>

#include "Scene.h"

MTime MAnimControl::currentTime() {
    return scene::Scene::current().time();
}

MStatus MAnimControl::setCurrentTime(const MTime& time) {
    scene::Scene::current().setTime(time);
    return MStatus::kSuccess;
}
