#include "Single_Instance.h"

#include <QDataStream>
#include <QFileInfo>
#include <QLocalServer>
#include <QLocalSocket>

#include "Alert_Lock.h"
#include "Kt_forms.h"

namespace Plexidex {

using namespace Kt_forms;

namespace {

constexpr int Answer_Msecs = 2'000;
constexpr quint32 Sign = 0x506C6578;  // "Plex", before what one start says to another

QString Name_For(const std::string& database) {
  return To_Qt(Private_Name("window", database));
}

}  // namespace

bool TSingle_Instance::Call(const std::string& database, const QStringList& files) {
  QLocalSocket socket;
  socket.connectToServer(Name_For(database));
  if (!socket.waitForConnected(Answer_Msecs)) return false;
  QStringList paths;
  for (const QString& file : files) paths << QFileInfo(file).absoluteFilePath();
  QDataStream stream(&socket);
  stream << Sign << paths;
  socket.flush();
  // One that hangs is not waited for; a second window is the lesser evil.
  if (!socket.waitForReadyRead(Answer_Msecs)) return false;
  return !socket.readAll().isEmpty();
}

void TSingle_Instance::Answer_For(const std::string& database) {
  const QString name = Name_For(database);
  if (server && server->serverName() == name) return;
  delete server;
  server = new QLocalServer(this);
  server->setSocketOptions(QLocalServer::UserAccessOption);
  connect(server, &QLocalServer::newConnection, this, &TSingle_Instance::Take_Call);
  if (server->listen(name)) return;
  QLocalSocket other;
  other.connectToServer(name);
  if (other.waitForConnected(Answer_Msecs)) return;  // that one answers
  // What a program that was killed has left.
  QLocalServer::removeServer(name);
  server->listen(name);
}

void TSingle_Instance::Take_Call() {
  while (QLocalSocket* socket = server->nextPendingConnection()) {
    connect(socket, &QLocalSocket::disconnected, socket, &QLocalSocket::deleteLater);
    connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
      QDataStream stream(socket);
      stream.startTransaction();
      quint32 sign = 0;
      QStringList files;
      stream >> sign >> files;
      if (!stream.commitTransaction() || sign != Sign) return;
      socket->write("+");
      socket->flush();
      // After this, as it may take as long as a dialog.
      QMetaObject::invokeMethod(
          this, [this, files] { emit Called(files); }, Qt::QueuedConnection);
    });
  }
}

}  // namespace Plexidex
