#pragma once

// The tools and the popup menu of the day view, for the views that have the same.

#include "Entry_Commands.h"
#include "ui_View_Tools.h"

namespace KTReminds {

inline TEntry_Controls Entry_Controls_Of(const Ui::View_Tools& tools) {
  return {.Toggle = {tools.AckBtn, tools.Ackmenu},
          .Add_Event = {tools.Addbtn, tools.AddMenu},
          .Add_Task = {tools.AddTaskBtn, tools.AddTask1},
          .Delete = {tools.Delbtn, tools.DelMenu},
          .Open = {tools.PropsBtn, tools.PropsMenu},
          .Popup = tools.PopupMenu1,
          .Sort_By = tools.SortBy1,
          .Columns = {tools.Sort0, tools.Sort1, tools.Sort2, tools.Sort3, tools.Sort4},
          .Directions = {tools.Ascending1, tools.Descending1}};
}

inline QList<QAction*> View_Actions_Of(const Ui::View_Tools& tools) {
  return {tools.ToolButton10, tools.ToolButton9,  tools.ToolButton8, tools.ToolButton11,
          tools.DailyView1,   tools.MonthlyView1, tools.AllView1};
}

}  // namespace KTReminds
