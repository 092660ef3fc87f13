# For ./demo, which reads it: a MariaDB server of its own with the sample database's customers.
# On loopback, on a free port, in a folder that goes with it; as root it runs as the package's user.

# start_mariadb DATABASE: starts the server and loads the SQLite sample database. Sets connection; stop_mariadb
# ends it.
start_mariadb() {
  local as=() port
  mariadb_folder=$(mktemp -d /tmp/norvelricerca-demo-XXXXXX)
  chmod 755 "$mariadb_folder"
  if [ "$(id -u)" -eq 0 ]; then
    chown mysql: "$mariadb_folder"
    as=(setpriv --reuid=mysql --regid=mysql --clear-groups)
  fi
  port=$(python3 -c 'import socket; s = socket.socket(); s.bind(("127.0.0.1", 0)); print(s.getsockname()[1])')
  "${as[@]}" mariadb-install-db --no-defaults --datadir="$mariadb_folder/dati" --tmpdir="$mariadb_folder" \
    --auth-root-authentication-method=normal --skip-test-db >"$mariadb_folder/installazione.log" 2>&1
  "${as[@]}" mariadbd --no-defaults --datadir="$mariadb_folder/dati" --tmpdir="$mariadb_folder" --socket="$mariadb_folder/s" \
    --port="$port" --bind-address=127.0.0.1 --skip-name-resolve --local-infile=1 \
    --character-set-server=utf8mb4 >"$mariadb_folder/server.log" 2>&1 &
  mariadb_pid=$!
  for _ in $(seq 100); do
    mariadb_says -e 'SELECT 1' >/dev/null 2>&1 && break
    kill -0 "$mariadb_pid" 2>/dev/null || { cat "$mariadb_folder/server.log" >&2; return 1; }
    sleep 0.1
  done
  load_customers "$1"
  connection="Driver={MySQL ODBC 8.0 Unicode Driver};Server=127.0.0.1;Port=$port;Database=azienda;"
  connection+="User=demo;Password=demo"
}

mariadb_says() { mariadb --no-defaults --socket="$mariadb_folder/s" -u root --local-infile=1 "$@"; }

load_customers() {
  local table
  for table in clienti operatori ricerchepers; do
    sqlite3 -tabs -nullvalue '\N' "$1" "SELECT * FROM $table" >"$mariadb_folder/$table.tsv"
  done
  mariadb_says <<SQL
CREATE DATABASE azienda CHARACTER SET utf8mb4;
CREATE USER 'demo'@'127.0.0.1' IDENTIFIED BY 'demo';
GRANT ALL ON azienda.* TO 'demo'@'127.0.0.1';
USE azienda;
CREATE TABLE clienti (codice INT PRIMARY KEY, ragione_sociale VARCHAR(80), citta VARCHAR(60), provincia CHAR(2),
  indirizzo VARCHAR(80), data_nascita DATE, fatturato DECIMAL(12,2), attivo BIT(1), note TEXT);
CREATE TABLE operatori (codiceutente VARCHAR(30) PRIMARY KEY, ricerchepers BIT(1));
CREATE TABLE ricerchepers (codiceoperatore VARCHAR(30), codicericerca VARCHAR(30), NomeVista VARCHAR(60),
  preferito BIT(1), PRIMARY KEY (codiceoperatore, codicericerca, NomeVista));
LOAD DATA LOCAL INFILE '$mariadb_folder/clienti.tsv' INTO TABLE clienti CHARACTER SET utf8mb4
  (codice, ragione_sociale, citta, provincia, indirizzo, data_nascita, fatturato, @attivo, note)
  SET attivo = CAST(@attivo AS UNSIGNED);
LOAD DATA LOCAL INFILE '$mariadb_folder/operatori.tsv' INTO TABLE operatori CHARACTER SET utf8mb4
  (codiceutente, @diritto) SET ricerchepers = CAST(@diritto AS UNSIGNED);
LOAD DATA LOCAL INFILE '$mariadb_folder/ricerchepers.tsv' INTO TABLE ricerchepers CHARACTER SET utf8mb4
  (codiceoperatore, codicericerca, NomeVista, @preferito) SET preferito = CAST(@preferito AS UNSIGNED);
SQL
}

stop_mariadb() {
  [ -z "${mariadb_pid:-}" ] || { kill "$mariadb_pid" 2>/dev/null && wait "$mariadb_pid"; } || true
  [ -z "${mariadb_folder:-}" ] || rm -rf "$mariadb_folder"
}
