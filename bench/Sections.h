#pragma once

namespace tarnwick::bench {

// Each runs in a process of its own, so that one's memory and windows don't weigh on another's figures.
void RunSection(const char* name);

void Links();
void LinksOnQt();
void Silence();
void SilenceOnQt();
void Duplicates();
void DuplicatesOnQt();
void ManyRows();
void Start();
void StartBare(); // what Start() starts to have a floor
void StartMain();

} // namespace tarnwick::bench
