#pragma once

#include <QList>
#include <QSet>
#include <QString>

/**
 * The tree model over the pipeline. For now it holds the naming rule shared by the pipeline and the
 * tree: two objects of one kind with the same base name are told apart by a number.
 */
class VXPipelineModel
{
public:
  // The lowest suffix counter not in use among the objects with that base name; 1 when none has it.
  template<class ObjectT>
  static int GetNameSuffixCounter(const QList<ObjectT*>& objects, const QString& baseName)
  {
    QSet<int> used;
    bool nameInUse = false;
    for (const ObjectT* object : objects)
    {
      if (object != nullptr && object->baseName() == baseName)
      {
        nameInUse = true;
        used.insert(object->getNameSuffixCounter());
      }
    }
    if (!nameInUse)
    {
      return 1;
    }
    int counter = 1;
    while (used.contains(counter))
    {
      ++counter;
    }
    return counter;
  }
};
