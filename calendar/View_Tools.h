#pragma once

// The tools and the popup menu of the day view, for the views that have the same.

#include "Calendar_View.h"
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

inline TDate_Controls Date_Controls_Of(const Ui::View_Tools& tools, Kt_forms::TTitle_Label* title,
                                       QWidget* calendar_panel) {
  return {.Title = title,
          .Calendar_Panel = calendar_panel,
          .Calendar = {tools.ToolButton4, tools.GotoDate1},
          .Previous = {tools.PrevBtn, tools.PrevMenu},
          .Next = {tools.Nextbtn, tools.NextMenu},
          .Today = {tools.ToolButton7, tools.Today1},
          .Views = View_Actions_Of(tools)};
}

}  // namespace KTReminds
